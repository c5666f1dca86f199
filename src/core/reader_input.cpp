// How the summary reader reads its log.

#include <ostream>
#include <utility>

#include "core/process_state.h"
#include "core/vyn_profile_log_reader.h"
#include "input/byte_source.h"
#include "input/chunk_room.h"
#include "input/init_time.h"
#include "input/queue_waits.h"
#include "log/logger_registry.h"

namespace vyn::profiling {

bool VynProfileLogReader::readInputFile(bool writeObjectPayloads) {
  if (!readChunks({makeChunkOrLog, [this](const Chunk& chunk) { takeChunk(chunk); }})) {
    return false;
  }
  m_writeObjectPayloads = writeObjectPayloads;
  standardOutput() << deriveStatistics();
  return true;
}

bool VynProfileLogReader::readChunks(const ChunkLoading& loading) {
  FileSource file(m_inputLogFileLocation);
  if (!file.isOpen()) {
    log::log(log::kError, "Invalid or nonexistent file: %s", m_inputLogFileLocation.c_str());
    return false;
  }
  if (std::exchange(m_readStarted, true)) {
    log::log(log::kError, "A reader reads its log once: %s", m_inputLogFileLocation.c_str());
    return false;
  }
  return loadChunks(file, m_flatBufferReader, loading);
}

void VynProfileLogReader::takeChunk(const Chunk& chunk) {
  m_nameFingerprints.startChunk(chunk.bytes());
  if (!m_headerSaved) {
    saveHeader();
  }
  m_reachedEof = false;
  while (!m_reachedEof) {
    processNextMessage();
  }
}

bool VynProfileLogReader::processNextMessage() {
  const schema::Message* message = nextMessage();
  return message != nullptr && dispatchMessage(*message);
}

const schema::Message* VynProfileLogReader::nextMessage() {
  const schema::Message* message = m_flatBufferReader.nextMessage();
  if (message == nullptr) {
    m_reachedEof = true;
    log::log(log::kDebug, "profiling::VynProfileLogReader reached EOF!");
  }
  return message;
}

bool VynProfileLogReader::dispatchMessage(const schema::Message& message) {
  using schema::MethodType;
  const bool isTaken = isVisible(message, m_visibilityLevel);
  switch (message.method()) {
    case MethodType::BACKEND_EXECUTE_ASYNC:
      m_asyncExecute = true;  // even a message that is not taken makes the run an asynchronous one
      [[fallthrough]];
    case MethodType::BACKEND_EXECUTE:
      return isTaken && fileExecution(message, graphStores());
    case MethodType::BACKEND_FINALIZE:
      return isTaken && fileFinalize(message, graphStores());
    case MethodType::BACKEND_GRAPH_COMPONENT:
      return isTaken && fileGraphComponent(message, graphStores());
    case MethodType::APPLY_BINARY_SECTION:
      return isTaken && fileBinarySection(message, graphStores());
    case MethodType::APP_CONTEXT_CREATE:
      return fileTiming(message, isTaken,
                        {.duration = m_contextCreateTime, .timestamp = m_contextCreateTimestamp});
    case MethodType::APP_COMPOSE_GRAPHS:
      return fileTiming(message, isTaken,
                        {.duration = m_composeGraphsTime, .timestamp = m_composeGraphsTimestamp});
    default:
      return dispatchStep(message, isTaken);
  }
}

bool VynProfileLogReader::dispatchStep(const schema::Message& message, bool isTaken) {
  using schema::MethodType;
  const auto file = [&](const StepStore& store) {
    return isTaken && fileStep(message, store, m_eventStrings);
  };
  switch (message.method()) {
    case MethodType::BACKEND_CREATE_FROM_BINARY:
      return file({.duration = m_createFromBinaryTime,
                   .timestamp = m_createFromBinaryTimestamp,
                   .events = m_createFromBinaryEvents,
                   .isSeen = &m_hasCreateFromBinaryEvents});
    case MethodType::BACKEND_DEINIT:
      return file(
          {.duration = m_deInitTime, .timestamp = m_deInitTimestamp, .events = m_deInitEvents});
    case MethodType::APP_EXECUTE_IPS:
      return file({.duration = m_executeIpsTime,
                   .timestamp = m_executeIpsTimestamp,
                   .events = m_executeIpsEvents,
                   .isSeen = &m_hasExecuteIps});
    case MethodType::LIBRARY_LOAD:
      return file({.duration = m_libLoadTime,
                   .timestamp = m_libLoadTimestamp,
                   .events = m_libLoadEvents,
                   .isSeen = &m_hasLibLoad});
    default:
      log::log(log::kError, "Unknown method type.");
      return false;
  }
}

GraphStores VynProfileLogReader::graphStores() {
  return {.initEvents = m_initEvents,
          .hasInitEvents = m_hasInitEvents,
          .finalizeGroups = m_finalizeGroups,
          .hasFinalize = m_hasFinalize,
          .hasFinalizeEvents = m_hasFinalizeEvents,
          .executions = m_executeGroups,
          .executionIndex = m_executeGroupIndex,
          .binarySections = m_applyBinarySectionGroups,
          .binarySectionIndex = m_applyBinarySectionGroupIndex,
          .nameFingerprints = m_nameFingerprints,
          .strings = m_eventStrings};
}

std::string VynProfileLogReader::deriveStatistics() {
  m_executeAverage = averagesOf(m_executeGroups);
  m_executeMax = slowestFiguresOf(m_executeGroups);
  m_executeMin = fastestFiguresOf(m_executeGroups);
  m_applyBinarySectionAverage = averagesOf(m_applyBinarySectionGroups);
  m_applyBinarySectionMax = slowestFiguresOf(m_applyBinarySectionGroups);
  m_applyBinarySectionMin = fastestFiguresOf(m_applyBinarySectionGroups);
  std::string messages = m_asyncExecute ? deriveQueueWaits() : std::string();
  deriveInitTotals();
  return messages;
}

std::string VynProfileLogReader::deriveQueueWaits() {
  QueueWaits waits = queueWaitsOf(m_executeGroups);
  m_queueWaitSeries = std::move(waits.series);
  m_queueWaitMax = std::move(waits.slowest);
  m_queueWaitMin = std::move(waits.fastest);
  return std::move(waits.messages);
}

void VynProfileLogReader::deriveInitTotals() {
  InitSteps steps;
  steps.contextCreate = {.duration = m_contextCreateTime, .timestamp = m_contextCreateTimestamp};
  steps.composeGraphsDuration = m_composeGraphsTime;
  steps.finalizeGroups = m_hasFinalize ? &m_finalizeGroups : nullptr;
  if (m_hasCreateFromBinaryEvents) {
    steps.createFromBinary =
        StepTime{.duration = m_createFromBinaryTime, .timestamp = m_createFromBinaryTimestamp};
  }
  const StepTime init = initTimeOf(steps);
  m_initTimestamp = init.timestamp;
  m_initTime = init.duration;
}

}  // namespace vyn::profiling
