// vyn-make-log: writes profiling logs like those of a real run, to try readers and pipelines on.

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <limits>
#include <optional>
#include <string>

#include "core/version/profile_viewer_version.h"
#include "logmaker/chunk_writer.h"
#include "logmaker/options.h"
#include "logmaker/output_file.h"
#include "logmaker/progress.h"
#include "logmaker/record_writer.h"
#include "logmaker/scenario.h"

namespace vyn::logmaker {
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

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

int run(int argc, char** argv) {
  Options options;
  CLI::App app("Writes a profiling log like that of a real run: equal options, equal bytes.",
               "vyn-make-log");
  addOptions(app, options);
  app.set_version_flag("-V,--version",
                       std::string("vyn-make-log ") + profiling::kProfileViewerVersion);
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return std::string("vyn-make-log: ") + error.what() + "; see vyn-make-log --help\n";
  });
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kWrongUsage;
  }
  makeLog(options);
  return 0;
}

}  // namespace
}  // namespace vyn::logmaker

int main(int argc, char** argv) {
  // A closed pipe and a file size limit are reported like any other failed write.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return vyn::logmaker::run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "vyn-make-log: %s\n", error.what());
    return vyn::logmaker::kFailed;
  }
}
