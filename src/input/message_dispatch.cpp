#include "core/vyn_profile_log_reader.h"
#include "log/logger_registry.h"

namespace vyn::profiling {

bool VynProfileLogReader::processNextMessage() {
  const schema::Message* message = m_flatBufferReader.nextMessage();
  if (message == nullptr) {
    m_reachedEof = true;
    log::log(log::kDebug, "profiling::VynProfileLogReader reached EOF!");
    return false;
  }
  return dispatchMessage(*message);
}

bool VynProfileLogReader::dispatchMessage(const schema::Message& message) {
  using schema::MethodType;
  switch (message.method()) {
    case MethodType::BACKEND_EXECUTE:
      return takeExecute(message);
    case MethodType::BACKEND_EXECUTE_ASYNC:
      return takeExecuteAsync(message);
    case MethodType::BACKEND_FINALIZE:
      return takeFinalize(message);
    case MethodType::BACKEND_CREATE_FROM_BINARY:
      return takeCreateFromBinary(message);
    case MethodType::BACKEND_DEINIT:
      return takeDeInit(message);
    case MethodType::APP_CONTEXT_CREATE:
      return takeTiming(message, m_contextCreateTimestamp, m_contextCreateTime);
    case MethodType::APP_COMPOSE_GRAPHS:
      return takeTiming(message, m_composeGraphsTimestamp, m_composeGraphsTime);
    case MethodType::APP_EXECUTE_IPS:
      return takeExecuteIps(message);
    case MethodType::BACKEND_GRAPH_COMPONENT:
      return takeGraphComponent(message);
    case MethodType::LIBRARY_LOAD:
      return takeLibraryLoad(message);
    case MethodType::APPLY_BINARY_SECTION:
      return takeApplyBinarySection(message);
    default:
      log::log(log::kError, "Unknown method type.");
      return false;
  }
}

bool VynProfileLogReader::isVisible(const schema::Message& message) const {
  return message.visibilityLevel() < static_cast<std::int8_t>(m_visibilityLevel);
}

}  // namespace vyn::profiling
