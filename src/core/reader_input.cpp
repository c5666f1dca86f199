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
  return message != nullptr && fileMessage(*message, m_visibilityLevel, stores());
}

const schema::Message* VynProfileLogReader::nextMessage() {
  const schema::Message* message = m_flatBufferReader.nextMessage();
  if (message == nullptr) {
    m_reachedEof = true;
    log::log(log::kDebug, "profiling::VynProfileLogReader reached EOF!");
  }
  return message;
}

RunStores VynProfileLogReader::stores() {
  return {.contextCreate = {.duration = m_contextCreateTime, .timestamp = m_contextCreateTimestamp},
          .composeGraphs = {.duration = m_composeGraphsTime, .timestamp = m_composeGraphsTimestamp},
          .createFromBinary = {.duration = m_createFromBinaryTime,
                               .timestamp = m_createFromBinaryTimestamp,
                               .events = m_createFromBinaryEvents,
                               .isSeen = &m_hasCreateFromBinaryEvents},
          .deInit = {.duration = m_deInitTime,
                     .timestamp = m_deInitTimestamp,
                     .events = m_deInitEvents},
          .executeIps = {.duration = m_executeIpsTime,
                         .timestamp = m_executeIpsTimestamp,
                         .events = m_executeIpsEvents,
                         .isSeen = &m_hasExecuteIps},
          .libraryLoad = {.duration = m_libLoadTime,
                          .timestamp = m_libLoadTimestamp,
                          .events = m_libLoadEvents,
                          .isSeen = &m_hasLibLoad},
          .isAsync = m_asyncExecute,
          .graphs = {.initEvents = m_initEvents,
                     .hasInitEvents = m_hasInitEvents,
                     .finalizeGroups = m_finalizeGroups,
                     .hasFinalize = m_hasFinalize,
                     .hasFinalizeEvents = m_hasFinalizeEvents,
                     .executions = m_executeGroups,
                     .executionIndex = m_executeGroupIndex,
                     .binarySections = m_applyBinarySectionGroups,
                     .binarySectionIndex = m_applyBinarySectionGroupIndex,
                     .nameFingerprints = m_nameFingerprints,
                     .strings = m_eventStrings}};
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
