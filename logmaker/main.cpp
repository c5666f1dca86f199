// vyn-make-log: writes profiling logs like those of a real run, to try readers and pipelines on.

#include <CLI/CLI.hpp>
#include <cstdint>
#include <limits>
#include <new>
#include <optional>
#include <string>

#include "base/version/profile_viewer_version.h"
#include "cli/program.h"
#include "cli/progress.h"
#include "cli/usage_report.h"
#include "files/interruption.h"
#include "logmaker/chunk_writer.h"
#include "logmaker/options.h"
#include "logmaker/output_file.h"
#include "logmaker/record_writer.h"
#include "logmaker/scenario.h"

namespace vyn::logmaker {
namespace {

constexpr char kProgramName[] = "vyn-make-log";

constexpr char kNotEnoughMemory[] =
    "not enough memory; free some memory or ask for less with --nodes, --graphs or --chunk-size";

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

  std::optional<cli::Progress> progress(std::in_place, kProgramName, options.size);
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

  // Both files are complete before either gets its name, and no signal comes in between.
  logFile.close();
  if (recordFile) {
    recordFile->close();
  }
  const files::SignalDelay delay;
  logFile.publish();
  if (recordFile) {
    recordFile->publish();
  }
}

int run(int argc, char** argv) {
  Options options;
  CLI::App app("Writes a profiling log like that of a real run: equal options, equal bytes.",
               kProgramName);
  cli::setHelpLabels(app);
  addOptions(app, options);
  app.set_version_flag("-V,--version",
                       std::string(kProgramName) + " " + profiling::kProfileViewerVersion)
      ->disable_flag_override();
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return cli::endParsing(app, error, kProgramName, [&] { return explainUsage(app, error); });
  }
  makeLog(options);
  return cli::kDone;
}

int runInLittleMemory(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::bad_alloc&) {
    cli::reportLine(kProgramName, kNotEnoughMemory);
    return cli::kFailed;
  }
}

}  // namespace
}  // namespace vyn::logmaker

int main(int argc, char** argv) {
  return vyn::cli::runProgram(vyn::logmaker::kProgramName,
                              [&] { return vyn::logmaker::runInLittleMemory(argc, argv); });
}
