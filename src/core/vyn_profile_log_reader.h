#pragma once

#include <cstdint>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "input/byte_source.h"
#include "input/chunk.h"
#include "input/event_copies.h"
#include "input/execution_records.h"
#include "input/flat_buffer_reader_util.h"
#include "input/group_index.h"
#include "input/text_fingerprints.h"
#include "input/text_hash.h"
#include "report/payload_names.h"
#include "vyn/profiling/profile_log_reader.h"

namespace vyn::profiling {

struct Heading;  // report/headings.h

/// Queue wait in microseconds by graph name.
using QueueWaits = std::unordered_map<std::string_view, std::uint64_t, TextHash>;

/// The events that stand for a graph's executions: averageEventsOf and its like (statistics.h).
using EventsOf = std::vector<EventNode> (*)(const ExecutionGroup&, Payloads);

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

  // Reading. A message is visible when its level is below the reader's; each take operation files
  // one message into the stores below and returns false when it did not take it. One that throws,
  // for want of memory, leaves the stores as they were, but for the asynchronous flag.
  bool readChunks(ByteSource& source);
  bool takeChunk(const Chunk& chunk);

  /// True for the first read. A second one, whatever became of the first, is refused with a log
  /// line: nothing resets what the first left.
  bool startReading();

  bool dispatchMessage(const schema::Message& message);
  bool isVisible(const schema::Message& message) const;
  bool takeTiming(const schema::Message& message, std::uint64_t& timestamp,
                  std::uint64_t& duration);
  bool takeSingleRecord(const schema::Message& message, std::uint64_t& duration,
                        std::uint64_t& timestamp, std::vector<EventNode>& events);
  bool takeCreateFromBinary(const schema::Message& message);
  bool takeDeInit(const schema::Message& message);
  bool takeExecuteIps(const schema::Message& message);
  bool takeLibraryLoad(const schema::Message& message);
  bool takeExecute(const schema::Message& message);
  bool takeExecuteAsync(const schema::Message& message);
  bool takeApplyBinarySection(const schema::Message& message);
  bool takeFinalize(const schema::Message& message);
  bool takeGraphComponent(const schema::Message& message);
  static ExecutionRecord decodeExecution(const schema::Message& message,
                                         std::list<std::string>& strings);
  void keepInitEvents(std::vector<EventNode>&& initEvents) noexcept;
  void keepStrings(std::list<std::string>& strings) noexcept;
  void addExecution(const schema::Message& message, ExecutionRecord&& record);
  void addFinalizeGroup(EventGroup&& group);

  // Statistics, derived once the whole log is read. The first two return what is to be printed.
  std::string deriveStatistics();
  std::string deriveQueueWaits();
  void deriveInitTotals();

  // Output: the summary is built whole before it is printed, the CSV written line by line.
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

  void printExecuteStats(std::ostream& stream, const Heading& heading,
                         const std::vector<EventGroup>& figures, EventsOf eventsOf,
                         const QueueWaits& queueWaits);
  void printQueueWait(std::ostream& stream, const EventGroup& figure,
                      const QueueWaits& queueWaits) const;
  void printApplyBinarySectionStats(std::ostream& stream, const Heading& heading,
                                    const std::vector<EventGroup>& figures, EventsOf eventsOf);

  // Listing. printEvents and writeEventsCsv take their events by value: these hand them the one
  // copy that there is beside the model, without the payload bytes that nothing is written from.
  // The second listEvents lists what `eventsOf` makes of one graph's executions.
  Payloads listedPayloads() const;
  void listEvents(std::ostream& stream, const std::vector<EventNode>& events);
  void listEvents(std::ostream& stream, const std::vector<ExecutionGroup>& groups,
                  std::size_t index, EventsOf eventsOf);
  void listEventsCsv(std::ostream& stream, const std::vector<EventNode>& events,
                     std::uint64_t timestamp, const std::string& keyword);

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
  void writeExecutionsCsv(std::ostream& stream, const std::vector<ExecutionGroup>& groups,
                          const std::string& rowKeyword, const std::string& eventKeyword);

  /// Writes an OBJECT event's bytes to the file that it names, or to the next free numbered one.
  /// The name ends before its first zero byte.
  void writeObjectPayload(const EventNode& event);

  /// Writes the payloads of every execution's OBJECT events.
  void writeExecutionPayloads();

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

  // Look-up by graph name for the two stores of executions above.
  GroupIndex m_executeGroupIndex;
  GroupIndex m_applyBinarySectionGroupIndex;
  TextFingerprints m_nameFingerprints;  // of the current chunk's graph names

  PayloadNames m_payloadNames;

  bool m_readStarted = false;
};

}  // namespace vyn::profiling
