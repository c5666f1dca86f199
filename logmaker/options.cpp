#include "logmaker/options.h"

#include <cstddef>
#include <filesystem>
#include <limits>
#include <system_error>

namespace vyn::logmaker {
namespace {

namespace fs = std::filesystem;

constexpr char kExamples[] =
    R"(SIZE is a whole number, of bytes or with a unit: KB, MB, GB (thousands) or KiB, MiB, GiB.

Examples:
  vyn-make-log -o run.log                          a small log
  vyn-make-log -o run.log --graphs 2 --async       two graphs, executed asynchronously
  vyn-make-log -o big.log --size 100MB --seed 7    about 100 MB, the same bytes every time
  vyn-make-log -o - --record run.jsonl | my-tool   a log for a pipe, and what it says
)";

CLI::Validator upTo(std::uint64_t largest) {
  return CLI::Range(std::uint64_t{0}, largest).description("");
}

CLI::Validator fromOneUpTo(std::uint64_t largest) {
  return CLI::Range(std::uint64_t{1}, largest).description("");
}

CLI::Validator named() {
  return {[](const std::string& name) { return name.empty() ? "the name is empty" : ""; }, ""};
}

/// Where every number is allowed: conversion would wrap a negative one around and take nothing
/// for 0.
CLI::Validator wholeNumber() {
  return {[](const std::string& text) {
            const bool isNumber =
                !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
            return isNumber ? "" : "'" + text + "' is not a whole number";
          },
          ""};
}

bool isSameFile(const std::string& left, const std::string& right) {
  std::error_code ignored;
  return left == right || fs::equivalent(left, right, ignored) ||
         fs::weakly_canonical(fs::absolute(left, ignored), ignored) ==
             fs::weakly_canonical(fs::absolute(right, ignored), ignored);
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
  const CLI::Validator withUnit = CLI::AsSizeValue(true).description("");
  auto* executions =
      app.add_option("--executions", options.scenario.executions, "Executions of each graph")
          ->check(upTo(1'000'000'000))
          ->type_name("N")
          ->capture_default_str();
  app.add_option("--size", options.size, "Execute until the log has about this size")
      ->transform(withUnit)
      ->check(fromOneUpTo(kLargestLog))
      ->type_name("SIZE")
      ->excludes(executions);
  app.add_option("--chunk-size", options.chunkSize, "Size at which a chunk ends")
      ->transform(withUnit)
      ->check(fromOneUpTo(kLargestChunk))
      ->type_name("SIZE")
      ->capture_default_str();
}

void addContentOptions(CLI::App& app, ScenarioOptions& scenario) {
  const auto addCount = [&app](const std::string& name, std::size_t& count,
                               const std::string& description, const CLI::Validator& range) {
    app.add_option(name, count, description)->check(range)->type_name("N")->capture_default_str();
  };
  addCount("--graphs", scenario.graphs, "Graphs that the run executes", fromOneUpTo(1'000));
  addCount("--nodes", scenario.nodes, "Nodes of each graph", upTo(100'000));
  addCount("--object-payloads", scenario.objectPayloads,
           "Events that carry a file in each graph's first execution", upTo(1'000));
  addCount("--binary-sections", scenario.binarySections, "Binary sections applied to each graph",
           upTo(1'000'000));
  app.add_flag("--async", scenario.isAsync, "Execute asynchronously, with queue waits");
  app.add_flag("--components", scenario.hasComponents, "Report the components of each graph");
  app.add_option("--seed", scenario.seed, "Number from which all variation is drawn")
      ->check(wholeNumber())
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

}  // namespace

void addOptions(CLI::App& app, Options& options) {
  addFileOptions(app, options);
  addSizeOptions(app, options);
  addContentOptions(app, options.scenario);
  app.footer(kExamples);
  app.final_callback([&options] { settle(options); });
}

}  // namespace vyn::logmaker
