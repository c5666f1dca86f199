#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <vector>

#include "input/execution_records.h"
#include "input/flat_buffer_reader_util.h"
#include "vyn/profiling/profile_log_reader.h"

namespace vyn::profiling {

/// The base reader: decodes every admitted message into an event model, derives statistics for each
/// graph, and writes a console summary and a CSV listing. Its operations stand in the folder of
/// their job: reading in src/input, output in src/report, the header here.
class VynProfileLogReader : public IVynProfileLogReader<VisibilityLevel> {
 public:
  VynProfileLogReader(const std::string& inputLogPath, VisibilityLevel level);
  ~VynProfileLogReader() override;
  VynProfileLogReader(const VynProfileLogReader&) = delete;
  VynProfileLogReader& operator=(const VynProfileLogReader&) = delete;

  bool generateOutput(const std::string& outputFileName) override;
  std::string getHeaderDetails() override;
  bool processNextMessage() override;
  bool readInputFile(bool writeObjectPayloads) override;
  int isReaderValid() override;
  void printEvents(std::ostream& stream, std::vector<EventNode> events) override;
  void writeEventsCsv(std::ostream& stream, std::vector<EventNode> events, std::uint64_t timestamp,
                      const std::string& message) override;

 protected:
  /// Copies the current chunk's header into the members below, once.
  void saveHeader();

  VisibilityLevel m_visibilityLevel;
  bool m_reachedEof = false;  // the current chunk has no further message
  FlatBufferReaderUtil m_flatBufferReader;

  // Durations are in microseconds; time stamps are the messages' own.
  std::uint64_t m_initTimestamp = 0;
  std::uint64_t m_initTime = 0;
  std::uint64_t m_contextCreateTimestamp = 0;
  std::uint64_t m_contextCreateTime = 0;
  std::uint64_t m_composeGraphsTimestamp = 0;
  std::uint64_t m_composeGraphsTime = 0;
  std::uint64_t m_reservedTimestamp = 0;  // nothing fills this pair
  std::uint64_t m_reservedTime = 0;
  std::vector<EventNode> m_initEvents;
  bool m_hasInitEvents = false;
  std::uint64_t m_createFromBinaryTime = 0;
  std::uint64_t m_createFromBinaryTimestamp = 0;
  std::vector<EventNode> m_createFromBinaryEvents;
  bool m_hasCreateFromBinaryEvents = false;
  bool m_hasApplyBinarySection = false;  // gates the three apply-binary-section blocks
  std::vector<EventGroup> m_finalizeGroups;
  bool m_hasFinalize = false;
  bool m_hasFinalizeEvents = false;
  std::vector<ExecutionGroup> m_executeGroups;
  std::vector<ExecutionGroup> m_applyBinarySectionGroups;
  bool m_asyncExecute = false;
  std::vector<EventGroup> m_executeAverage;
  std::vector<EventGroup> m_applyBinarySectionAverage;
  std::vector<EventGroup> m_applyBinarySectionMax;
  std::vector<EventGroup> m_applyBinarySectionMin;
  std::vector<EventGroup> m_executeMax;
  std::vector<EventGroup> m_executeMin;
  std::vector<NamedSeries> m_queueWaitSeries;
  std::vector<NamedValue> m_queueWaitMax;  // of the slowest executions
  std::vector<NamedValue> m_queueWaitMin;  // of the fastest executions
  std::uint64_t m_executeIpsTime = 0;
  std::uint64_t m_executeIpsTimestamp = 0;
  std::vector<EventNode> m_executeIpsEvents;
  bool m_hasExecuteIps = false;
  bool m_omitExecuteDetails = false;  // leaves queue waits and events out of the execute blocks
  std::uint64_t m_deInitTime = 0;
  std::uint64_t m_deInitTimestamp = 0;
  std::vector<EventNode> m_deInitEvents;
  std::string m_netRunVersion;
  std::string m_backendVersion;
  std::uint64_t m_libLoadTime = 0;
  std::uint64_t m_libLoadTimestamp = 0;
  std::vector<EventNode> m_libLoadEvents;
  bool m_hasLibLoad = false;
  std::string m_inputLogFileLocation;
  bool m_headerSaved = false;  // the header's numbers below are valid
  bool m_writeObjectPayloads = false;
  std::uint64_t m_epochTime;  // microseconds since the Unix epoch
  std::uint64_t m_steadyClockTimestamp;
  float m_timeScale;
  std::list<std::string> m_eventStrings;  // texts that string-valued events point to; never moved
};

}  // namespace vyn::profiling
