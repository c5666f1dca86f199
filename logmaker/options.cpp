#include "logmaker/options.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <limits>
#include <optional>
#include <system_error>
#include <vector>

#include "cli/sizes.h"
#include "cli/usage_report.h"
#include "files/file_descriptor.h"
#include "files/standard_streams.h"
#include "logmaker/number_options.h"

namespace vyn::logmaker {
namespace {

namespace fs = std::filesystem;

constexpr char kAboutSpace[] =
    "With --size, a log that the disk has no room for is refused at once. The size of other logs "
    "and\n"
    "of the record shows only as they are written.\n\n";

constexpr char kExamples[] =
    R"(Examples:
  vyn-make-log -o run.log                          a small log
  vyn-make-log -o run.log --graphs 2 --async       two graphs, executed asynchronously
  vyn-make-log -o big.log --size 100MB --seed 7    about 100 MB, the same bytes every time
  vyn-make-log -o - --record run.jsonl | my-tool   a log for a pipe, and what it says
)";

std::string aboutSizes() {
  return "SIZE is a whole number, of bytes or with one of the units " + cli::sizeUnits() +
         ".\nKB are 1,000 bytes, KiB 1,024; capitals do not matter, and the last B may be left "
         "out.\n\n";
}

CLI::Validator named() {
  return {[](const std::string& name) { return name.empty() ? "the name is empty" : ""; }, ""};
}

std::optional<struct stat> statusOf(const std::string& name) {
  struct stat status {};
  const int result = name == files::kStandardStreamPath ? fstat(STDOUT_FILENO, &status)
                                                        : stat(name.c_str(), &status);
  return result == 0 ? std::optional(status) : std::nullopt;
}

// Where no file is yet, the names tell.
bool willBeSameFile(const std::string& left, const std::string& right) {
  std::error_code ignored;
  return left != files::kStandardStreamPath && right != files::kStandardStreamPath &&
         fs::weakly_canonical(fs::absolute(left, ignored), ignored) ==
             fs::weakly_canonical(fs::absolute(right, ignored), ignored);
}

bool isSameFile(const std::string& left, const std::string& right) {
  const auto leftStatus = statusOf(left);
  const auto rightStatus = statusOf(right);
  if (leftStatus && rightStatus && !S_ISCHR(leftStatus->st_mode)) {
    return files::isSameFile(*leftStatus, *rightStatus);
  }
  return left == right || willBeSameFile(left, right);
}

void addFileOptions(CLI::App& app, Options& options) {
  app.add_option("-o,--output", options.output, "Log to write; - is standard output")
      ->required()
      ->check(named())
      ->type_name("FILE");
  app.add_option("--record", options.record,
                 "Also write what the log says, one JSON object a line; - is standard output")
      ->check(named())
      ->type_name("FILE");
}

void addSizeOptions(CLI::App& app, Options& options) {
  constexpr std::uint64_t kLargestLog = 1'000'000'000'000;  // bytes
  constexpr std::uint64_t kLargestChunk = 1'000'000'000;    // bytes; readers refuse 2 GiB
  auto* executions =
      app.add_option("--executions", options.scenario.executions, "Executions of each graph")
          ->transform(wholeNumber({0, 1'000'000'000}))
          ->type_name("N")
          ->capture_default_str();
  app.add_option("--size", options.size, "Execute until the log has about this size")
      ->transform(size({1, kLargestLog}))
      ->type_name("SIZE")
      ->excludes(executions);
  app.add_option("--chunk-size", options.chunkSize, "Size at which a chunk ends")
      ->transform(size({1, kLargestChunk}))
      ->type_name("SIZE")
      ->capture_default_str();
}

void addContentOptions(CLI::App& app, ScenarioOptions& scenario) {
  const auto addCount = [&app](const std::string& name, std::size_t& count,
                               const std::string& description, NumberRange range) {
    app.add_option(name, count, description)
        ->transform(wholeNumber(range))
        ->type_name("N")
        ->capture_default_str();
  };
  addCount("--graphs", scenario.graphs, "Graphs that the run executes", {1, 1'000});
  addCount("--nodes", scenario.nodes, "Nodes of each graph", {0, 100'000});
  addCount("--object-payloads", scenario.objectPayloads,
           "Events that carry a file in each graph's first execution", {0, 1'000});
  addCount("--binary-sections", scenario.binarySections, "Binary sections applied to each graph",
           {0, 1'000'000});
  app.add_flag("--async", scenario.isAsync, "Execute asynchronously, with queue waits")
      ->disable_flag_override();
  app.add_flag("--components", scenario.hasComponents, "Report the components of each graph")
      ->disable_flag_override();
  app.add_option("--seed", scenario.seed, "Number from which all variation is drawn")
      ->transform(wholeNumber({0, std::numeric_limits<std::uint64_t>::max()}))
      ->type_name("N")
      ->capture_default_str();
}

void settle(Options& options) {
  if (!options.record.empty() && isSameFile(options.output, options.record)) {
    throw CLI::ValidationError("--record", "names the same file as --output");
  }
  if (options.size != 0) {
    options.scenario.executions = std::numeric_limits<std::uint64_t>::max();
  }
}

// The words that the library could not place, in their order; an empty one says nothing.
std::optional<std::string> findUnexpectedWord(const CLI::App& app) {
  const std::vector<std::string> words = app.remaining();
  const auto found = std::find_if(words.begin(), words.end(), [](const std::string& word) {
    return !word.empty() && word != "-" && word != "--";
  });
  return found == words.end() ? std::nullopt : std::optional(*found);
}

}  // namespace

void addOptions(CLI::App& app, Options& options) {
  app.get_help_ptr()->disable_flag_override();
  addFileOptions(app, options);
  addSizeOptions(app, options);
  addContentOptions(app, options.scenario);
  app.footer(aboutSizes() + kAboutSpace + kExamples);
  app.final_callback([&options] { settle(options); });
}

std::string explainUsage(const CLI::App& app, const CLI::ParseError& error) {
  if (const auto word = findUnexpectedWord(app)) {
    return word->front() == '-' ? cli::explainUnknownOption(app, *word)
                                : *word + ": not expected here; a file is named with --output";
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    return cli::explainValueCount(app, error, "is given more than once");
  }
  return error.what();
}

}  // namespace vyn::logmaker
