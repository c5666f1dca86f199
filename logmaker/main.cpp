// vyn-make-log: writes profiling logs like those of a real run, to try readers and pipelines on.

#include <CLI/CLI.hpp>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <limits>
#include <new>
#include <optional>
#include <sstream>
#include <string>

#include "base/version/profile_viewer_version.h"
#include "host/host_error.h"
#include "host/interruption.h"
#include "host/printable_text.h"
#include "host/standard_streams.h"
#include "logmaker/chunk_writer.h"
#include "logmaker/options.h"
#include "logmaker/output_file.h"
#include "logmaker/progress.h"
#include "logmaker/record_writer.h"
#include "logmaker/scenario.h"
#include "logmaker/usage_report.h"

namespace vyn::logmaker {
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

constexpr char kNotEnoughMemory[] =
    "not enough memory; free some memory or ask for less with --nodes, --graphs or --chunk-size";

// Names and values of the command line may hold what would break the line or what a terminal obeys.
void reportLine(const std::string& text) {
  const std::string line = host::printable(text, host::LineFeeds::kEscaped);
  std::fprintf(stderr, "vyn-make-log: %s\n", line.c_str());
}

/// Reached when one more message as large as the last would leave the log farther from its size.
class SizeGoal {
 public:
  explicit SizeGoal(std::uint64_t goal) : m_goal(goal) {}

  void update(std::uint64_t size) {
    m_isReached = size + (size - m_lastSize) / 2 >= m_goal;
    m_lastSize = size;
  }
  bool isReached() const { return m_isReached; }

 private:
  std::uint64_t m_goal;
  std::uint64_t m_lastSize = 0;
  bool m_isReached = false;
};

void makeLog(const Options& options) {
  Scenario scenario(options.scenario);
  OutputFile logFile(options.output);
  logFile.refuseTerminal();
  logFile.expect(options.size);
  ChunkWriter log(logFile, scenario.header(), options.chunkSize);
  std::optional<OutputFile> recordFile;
  std::optional<RecordWriter> record;
  if (!options.record.empty()) {
    record.emplace(recordFile.emplace(options.record), scenario.header());
  }

  std::optional<Progress> progress(options.size);
  SizeGoal goal(options.size != 0 ? options.size : std::numeric_limits<std::uint64_t>::max());
  scenario.play(
      [&](const Message& message) {
        log.write(message);
        goal.update(log.size());
        progress->update(log.size());
        if (record) {
          record->write(message);
        }
      },
      [&] { return goal.isReached(); });
  log.finish();
  progress.reset();

  // Both files are complete before either gets its name.
  logFile.close();
  if (recordFile) {
    recordFile->close();
    recordFile->publish();
  }
  logFile.publish();
}

int finishParsing(const CLI::App& app, const CLI::ParseError& error) {
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
    std::ostringstream text;  // the help or the version
    app.exit(error, text);
    std::fputs(text.str().c_str(), stdout);
    host::finishStandardOutput();
    return 0;
  }
  reportLine(explainUsage(app, error) + "; see vyn-make-log --help");
  return kWrongUsage;
}

int run(int argc, char** argv) {
  Options options;
  CLI::App app("Writes a profiling log like that of a real run: equal options, equal bytes.",
               "vyn-make-log");
  addOptions(app, options);
  app.set_version_flag("-V,--version",
                       std::string("vyn-make-log ") + profiling::kProfileViewerVersion)
      ->disable_flag_override();
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return finishParsing(app, error);
  }
  makeLog(options);
  return 0;
}

int runAndReport(int argc, char** argv) {
  try {
    host::prepareStandardStreams();
    return run(argc, argv);
  } catch (const host::ClosedPipe&) {
    host::dieOfClosedPipe();
  } catch (const std::bad_alloc&) {
    reportLine(kNotEnoughMemory);
  } catch (const std::exception& error) {
    reportLine(error.what());
  }
  return kFailed;
}

}  // namespace
}  // namespace vyn::logmaker

int main(int argc, char** argv) { return vyn::logmaker::runAndReport(argc, argv); }
