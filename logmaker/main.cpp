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
#include "logmaker/output_file.h"
#include "logmaker/record_writer.h"
#include "logmaker/scenario.h"

namespace vyn::logmaker {
namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

struct Options {
  std::string output;
  std::string record;                ///< empty when none is wanted
  std::uint64_t size = 0;            ///< bytes; 0 when the executions decide
  std::uint64_t chunkSize = 64'000;  ///< bytes
  ScenarioOptions scenario;
};

constexpr char kExamples[] = R"(Examples:
  vyn-make-log -o run.log                          a small log
  vyn-make-log -o run.log --graphs 2 --async       two graphs, executed asynchronously
  vyn-make-log -o big.log --size 100MB --seed 7    about 100 MB, the same bytes every time
  vyn-make-log -o - --record run.jsonl | my-tool   a log for a pipe, and what it says
)";

void addContentOptions(CLI::App& app, ScenarioOptions& scenario) {
  app.add_option("--graphs", scenario.graphs, "Graphs that the run executes")
      ->check(CLI::Range(std::size_t{1}, std::size_t{1'000}))
      ->capture_default_str();
  app.add_option("--nodes", scenario.nodes, "Nodes of each graph")
      ->check(CLI::Range(std::size_t{0}, std::size_t{100'000}))
      ->capture_default_str();
  app.add_option("--object-payloads", scenario.objectPayloads,
                 "Events with a file's bytes in each graph's first execution")
      ->check(CLI::Range(std::size_t{0}, std::size_t{1'000}))
      ->capture_default_str();
  app.add_option("--binary-sections", scenario.binarySections,
                 "Binary sections applied to each graph")
      ->check(CLI::Range(std::size_t{0}, std::size_t{1'000'000}))
      ->capture_default_str();
  app.add_flag("--async", scenario.isAsync, "Execute asynchronously, with queue waits");
  app.add_flag("--components", scenario.hasComponents, "Report the components of each graph");
  app.add_option("--seed", scenario.seed, "Number from which all variation is drawn")
      ->capture_default_str();
}

void addSizeOptions(CLI::App& app, Options& options) {
  constexpr std::uint64_t kLargestSize = 1'000'000'000'000;  // bytes
  constexpr std::uint64_t kLargestChunk = 1'000'000'000;     // bytes; a chunk must not reach 2 GiB
  auto* executions =
      app.add_option("--executions", options.scenario.executions, "Executions of each graph")
          ->check(CLI::Range(std::uint64_t{0}, std::uint64_t{1'000'000'000}))
          ->capture_default_str();
  app.add_option("--size", options.size, "Execute until the log has about this size, e.g. 100MB")
      ->transform(CLI::AsSizeValue(true))
      ->check(CLI::Range(std::uint64_t{1}, kLargestSize))
      ->excludes(executions)
      ->type_name("SIZE");
  app.add_option("--chunk-size", options.chunkSize, "Size at which a chunk ends")
      ->transform(CLI::AsSizeValue(true))
      ->check(CLI::Range(std::uint64_t{1}, kLargestChunk))
      ->type_name("SIZE")
      ->capture_default_str();
}

void addFileOptions(CLI::App& app, Options& options) {
  const CLI::Validator isNamed(
      [](const std::string& name) { return name.empty() ? "the name is empty" : std::string(); },
      "");
  app.add_option("-o,--output", options.output, "Log to write; - is standard output")
      ->required()
      ->check(isNamed)
      ->type_name("FILE");
  app.add_option("--record", options.record,
                 "Also write what the log says, one JSON object a line; - is standard output")
      ->check(isNamed)
      ->type_name("FILE");
}

void requireTwoFiles(const Options& options) {
  if (options.output == options.record) {
    throw CLI::ValidationError("--record", "names the same file as --output");
  }
}

/// Whether one more message as large as the last would leave the log farther from its size.
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
  OutputFile output(options.output);
  ChunkWriter log(output, scenario.header(), options.chunkSize);
  std::optional<OutputFile> recordFile;
  std::optional<RecordWriter> record;
  if (!options.record.empty()) {
    record.emplace(recordFile.emplace(options.record), scenario.header());
  }

  SizeGoal goal(options.size != 0 ? options.size : std::numeric_limits<std::uint64_t>::max());
  scenario.play(
      [&](const Message& message) {
        log.write(message);
        goal.update(log.size());
        if (record) {
          record->write(message);
        }
      },
      [&] { return goal.isReached(); });
  log.finish();

  // Both files are safe before either gets its name.
  output.close();
  if (recordFile) {
    recordFile->close();
    recordFile->publish();
  }
  output.publish();
}

int run(int argc, char** argv) {
  Options options;
  CLI::App app("Writes a profiling log like that of a real run: the same options, the same bytes.",
               "vyn-make-log");
  app.set_version_flag("--version",
                       std::string("vyn-make-log ") + profiling::kProfileViewerVersion);
  app.footer(kExamples);
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return std::string("vyn-make-log: ") + error.what() + "; see vyn-make-log --help\n";
  });
  addFileOptions(app, options);
  addSizeOptions(app, options);
  addContentOptions(app, options.scenario);
  app.final_callback([&options] { requireTwoFiles(options); });
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kWrongUsage;
  }
  if (options.size != 0) {
    options.scenario.executions = std::numeric_limits<std::uint64_t>::max();
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
