#include "input/message_filing.h"

#include "log/logger_registry.h"

namespace vyn::profiling {
namespace {

bool isVisible(const schema::Message& message, VisibilityLevel readersLevel) {
  return message.visibilityLevel() < static_cast<std::int8_t>(readersLevel);
}

void noteWhateverItsLevel(const schema::Message& message, const RunStores& stores) {
  switch (message.method()) {
    case schema::MethodType::BACKEND_EXECUTE_ASYNC:
      stores.isAsync = true;
      break;
    case schema::MethodType::APP_CONTEXT_CREATE:
      stores.contextCreate.timestamp = message.header()->timestamp();
      break;
    case schema::MethodType::APP_COMPOSE_GRAPHS:
      stores.composeGraphs.timestamp = message.header()->timestamp();
      break;
    default:
      break;
  }
}

bool isKnown(schema::MethodType method) {
  return method > schema::MethodType::NONE && method <= schema::MethodType::MAX;
}

bool fileVisible(const schema::Message& message, const RunStores& stores) {
  using schema::MethodType;
  const auto step = [&](const StepStore& store) {
    fileStep(message, store, stores.graphs.strings);
    return true;
  };
  const auto timing = [&](const StepTimes& times) {
    fileTiming(message, times);
    return true;
  };
  const auto graph = [&](void (*file)(const schema::Message&, const GraphStores&)) {
    if (message.graphName() == nullptr) {
      return false;
    }
    file(message, stores.graphs);
    return true;
  };
  switch (message.method()) {
    case MethodType::BACKEND_EXECUTE:
    case MethodType::BACKEND_EXECUTE_ASYNC:
      return graph(fileExecution);
    case MethodType::BACKEND_FINALIZE:
      return graph(fileFinalize);
    case MethodType::BACKEND_GRAPH_COMPONENT:
      // One without a written level is rejected: a message with a name always has the level's slot.
      return graph(fileGraphComponent);
    case MethodType::APPLY_BINARY_SECTION:
      return graph(fileBinarySection);
    case MethodType::APP_CONTEXT_CREATE:
      return timing(stores.contextCreate);
    case MethodType::APP_COMPOSE_GRAPHS:
      return timing(stores.composeGraphs);
    case MethodType::BACKEND_CREATE_FROM_BINARY:
      return step(stores.createFromBinary);
    case MethodType::BACKEND_DEINIT:
      return step(stores.deInit);
    case MethodType::APP_EXECUTE_IPS:
      return step(stores.executeIps);
    case MethodType::LIBRARY_LOAD:
      return step(stores.libraryLoad);
    default:
      return false;
  }
}

}  // namespace

bool fileMessage(const schema::Message& message, VisibilityLevel readersLevel,
                 const RunStores& stores) {
  if (!isKnown(message.method())) {
    log::log(log::kError, "Unknown method type.");
    return false;
  }
  noteWhateverItsLevel(message, stores);
  return isVisible(message, readersLevel) && fileVisible(message, stores);
}

}  // namespace vyn::profiling
