#include "host/options/output_options.h"

#include <CLI/CLI.hpp>
#include <system_error>

#include "cli/sizes.h"

namespace vyn::host {
namespace {

// The texts with which validators refuse; empty when all is well.
std::string checkOutput(const std::string& text) {
  if (text.empty()) {
    return "the name of the output is empty";
  }
  const bool isOption = text.size() > 1 && text.front() == '-';
  return isOption ? "needs FILE before " + text + "; a file of this name is given as ./" + text
                  : "";
}

// Sizes become bytes, "none" the largest number.
std::string readSize(std::string& text) {
  if (text == "none") {
    text = std::to_string(OutputLimit::kNone);
    return "";
  }
  const cli::ParsedSize size = cli::parseSize(text);
  if (size.problem == std::errc::invalid_argument) {
    return "'" + text + "' is no size; give whole bytes, a size like 500MB or 2GiB, or none";
  }
  if (size.problem != std::errc()) {
    return text + " is too large; for no limit give none";
  }
  text = std::to_string(size.bytes);
  return "";
}

void addMaxOutput(CLI::App& commandLine, std::optional<std::uint64_t>& maxOutput) {
  commandLine
      .add_option("--max-output", maxOutput,
                  "Stop when an output gets larger: bytes, a size like 500MB or 2GiB, or none. "
                  "Without it: 1 GiB or 1000 times LOG, whichever is larger")
      ->type_name("SIZE")
      ->transform(CLI::Validator(readSize, ""));
}

}  // namespace

CLI::Option* addOutputOption(CLI::App& commandLine, std::string& name, const std::string& purpose) {
  return commandLine.add_option("-o,--output", name, purpose)
      ->type_name("FILE")
      ->check(checkOutput);
}

CLI::Option* addOutputOptions(CLI::App& commandLine, OutputOptions& options,
                              const std::string& purpose) {
  CLI::Option* output = addOutputOption(commandLine, options.name, purpose);
  commandLine
      .add_flag("--force", options.force,
                "Replace whatever has the name that the document gets without --output (json)")
      ->disable_flag_override()
      ->excludes(output);
  addMaxOutput(commandLine, options.maxSize);
  return output;
}

}  // namespace vyn::host
