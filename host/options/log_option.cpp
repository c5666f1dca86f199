#include "host/options/log_option.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "files/standard_streams.h"

namespace vyn::host {
namespace {

// The text with which it is refused; empty when all is well.
std::string checkLog(const std::string& text) {
  return text.empty() ? "the name of the log is empty" : "";
}

}  // namespace

void addLogOption(CLI::App& commandLine, std::string& path) {
  commandLine.add_option("LOG", path, "The profiling log; - is standard input")
      ->type_name("")
      ->required()
      ->check(checkLog);
}

void addLogsOption(CLI::App& commandLine, std::vector<std::string>& paths) {
  commandLine.add_option("LOG", paths, "The profiling logs; - is standard input")
      ->type_name("")
      ->required()
      ->check(checkLog);
}

void refuseRepeatedStandardInput(const std::vector<std::string>& paths) {
  if (std::count(paths.begin(), paths.end(), files::kStandardStreamPath) > 1) {
    throw CLI::ValidationError("LOG", "standard input can be read once only");
  }
}

}  // namespace vyn::host
