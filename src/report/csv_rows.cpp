#include "report/csv_rows.h"

#include <cstddef>
#include <iomanip>

#include "base/version/profile_viewer_version.h"

namespace vyn::profiling {
namespace {

constexpr int kCsvDecimals = 6;  // of the inferences per second
constexpr char kWholeRun[] = "null";

// Titles are separated by a comma and a blank, the rows below them by a bare comma.
constexpr char kColumnTitles[] =
    "Msg Timestamp, Message, Time, Unit of Measurement, Timing Source, Event Level, Event "
    "Identifier";

template <typename Value>
void writeRow(std::ostream& stream, std::uint64_t timestamp, const std::string& keyword,
              Value value, const char* unit, const std::string& identifier) {
  stream << timestamp << "," << keyword << "," << value << "," << unit << ",NETRUN,ROOT,"
         << identifier << std::endl;
}

void writeGraphRow(std::ostream& stream, std::uint64_t timestamp, const std::string& keyword,
                   std::uint64_t duration, std::size_t index, const std::string& graph) {
  writeRow(stream, timestamp, keyword, duration, "US",
           "Graph " + std::to_string(index) + ": " + graph);
}

}  // namespace

void writeHeaderLines(std::ostream& stream, const CsvHeader& header) {
  stream << "input log file location, " << header.inputLogFileLocation << std::endl;
  stream << "vyn-profile-viewer version, " << kProfileViewerVersion << std::endl;
  stream << "vyn-net-run version, " << header.netRunVersion << std::endl;
  stream << "Backend version, " << header.backendVersion << std::endl;
}

void writeColumnTitles(std::ostream& stream) { stream << kColumnTitles << std::endl; }

void writeStepRow(std::ostream& stream, std::uint64_t timestamp, const std::string& keyword,
                  std::uint64_t duration) {
  writeRow(stream, timestamp, keyword, duration, "US", kWholeRun);
}

void writeRateRow(std::ostream& stream, std::uint64_t timestamp, float inferencesPerSecond) {
  stream << std::fixed << std::setprecision(kCsvDecimals);
  writeRow(stream, timestamp, "EXECUTE IPS", inferencesPerSecond, "INF/SEC", kWholeRun);
}

void writeFinalizeRows(std::ostream& stream, const std::vector<EventGroup>& groups,
                       const EventLineWriter& writeEvents) {
  for (std::size_t i = 0; i < groups.size(); ++i) {
    const EventGroup& group = groups[i];
    writeGraphRow(stream, group.timestamp, "FINALIZE", group.duration, i, group.name);
    if (writeEvents) {
      writeEvents(group.events, group.timestamp);
    }
  }
}

void writeExecutionRows(std::ostream& stream, const std::string& keyword,
                        const std::vector<ExecutionGroup>& groups,
                        const EventLineWriter& writeEvents) {
  for (std::size_t i = 0; i < groups.size(); ++i) {
    for (const ExecutionRecord& record : groups[i].records) {
      writeGraphRow(stream, record.timestamp, keyword, record.duration, i, groups[i].name);
      if (writeEvents) {
        writeEvents(record.events, record.timestamp);
      }
    }
  }
}

}  // namespace vyn::profiling
