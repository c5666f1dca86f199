#pragma once

#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <vector>

#include "input/chunk_loading.h"
#include "input/event_copies.h"
#include "input/execution_records.h"
#include "input/flat_buffer_reader_util.h"
#include "input/group_index.h"
#include "input/message_filing.h"
#include "input/statistics.h"
#include "input/text_fingerprints.h"
#include "report/console_blocks.h"
#include "report/csv_rows.h"
#include "report/payload_names.h"
#include "vyn/profiling/profile_log_reader.h"

namespace vyn::profiling {

/// The summary reader: decodes every visible message into an event model, derives statistics for
/// each graph, and writes a console summary and a CSV listing. It holds the model and hands it to
/// the functions that do the work: those of src/input read and derive, those of src/report write.
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

  /// Reads the log's chunks as `loading` says; the file is closed afterwards. Returns false, with a
  /// log line, for a file that cannot be opened, for a log that is not accepted, and for a second
  /// read, whatever became of the first: nothing resets what that left.
  bool readChunks(const ChunkLoading& loading);

  /// The next message of the current chunk. At its end null, and m_reachedEof is set.
  const schema::Message* nextMessage();

  // Reading: a chunk's messages go into the stores below, which are handed on to be changed.
  void takeChunk(const Chunk& chunk);
  RunStores stores();

  // Statistics, derived once the whole log is read. The first two return what is to be printed.
  std::string deriveStatistics();
  std::string deriveQueueWaits();
  void deriveInitTotals();

  void printSummary(std::ostream& stream);
  void writeCsv(std::ostream& stream);

  // Console summary, one operation a block.
  void printHeaderDetails(std::ostream& stream);
  void printStatisticsTitle(std::ostream& stream);
  void printInitStats(std::ostream& stream);
  void printComposeGraphsStats(std::ostream& stream) const;
  void printFinalizeStats(std::ostream& stream);
  void printDeInitStats(std::ostream& stream);
  void printExecuteStatsOverall(std::ostream& stream);
  void printExecuteStatsAverage(std::ostream& stream);
  void printExecuteStatsMin(std::ostream& stream);
  void printExecuteStatsMax(std::ostream& stream);
  void printLibLoadStats(std::ostream& stream);
  void printApplyBinarySectionStatsAverage(std::ostream& stream);
  void printApplyBinarySectionStatsMin(std::ostream& stream);
  void printApplyBinarySectionStatsMax(std::ostream& stream);
  ExecuteBlock executeBlock(const Heading& heading, std::vector<ExecuteFigure> figures) const;
  void printApplyBinarySectionStats(std::ostream& stream, const Heading& heading,
                                    const std::vector<EventGroup>& figures, EventsOf eventsOf);

  /// The inferences per second, and the backend's latency in microseconds, of logs that have them.
  std::optional<float> executeRate() const;
  std::optional<std::uint64_t> backendLatency() const;

  // The events of initialisation are its own or else those of a creation from a binary; null when
  // there are none to list.
  const std::vector<EventNode>* listedInitEvents() const;

  // Listing, always through the operations of the interface, which derived readers may replace.
  // These take their events by value: they are handed the one copy that there is beside the model,
  // without the payload bytes that nothing is written from.
  Payloads listedPayloads() const;
  EventLister listerOf(const std::vector<EventNode>& events);
  GraphEventLister listerOf(const std::vector<EventGroup>& groups);
  GraphEventLister listerOf(const std::vector<ExecutionGroup>& groups, EventsOf eventsOf);
  EventLineWriter csvListerOf(std::ostream& stream, const std::string& keyword);

  // CSV listing: the lines before the rows, then one operation a kind of row.
  void writeCsvHeader(std::ostream& stream);
  void writeInitCsv(std::ostream& stream);
  void writeComposeGraphsCsv(std::ostream& stream) const;
  void writeFinalizeCsv(std::ostream& stream);
  void writeDeInitCsv(std::ostream& stream);
  void writeExecuteCsv(std::ostream& stream);
  void writeExecuteIpsCsv(std::ostream& stream);
  void writeLibLoadCsv(std::ostream& stream);
  void writeApplyBinarySectionCsv(std::ostream& stream);

  /// Writes an OBJECT event's bytes to the file that it names, or to the next free numbered one.
  void writeObjectPayload(const EventNode& event);

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
  bool m_hasApplyBinarySection = false;  // gates its three blocks; derived readers set it
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
  bool m_omitExecuteDetails = false;  // no queue waits and events; derived readers set it
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

  // Look-up by graph name for the two stores of executions above.
  GroupIndex m_executeGroupIndex;
  GroupIndex m_applyBinarySectionGroupIndex;
  TextFingerprints m_nameFingerprints;  // of the current chunk's graph names

  PayloadNames m_payloadNames;

  bool m_readStarted = false;
};

}  // namespace vyn::profiling
