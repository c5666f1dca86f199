#include "host/options/log_option.h"

#include <CLI/CLI.hpp>

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

}  // namespace vyn::host
