#include "output_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <iterator>
#include <system_error>

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

struct Unit {
  const char* name;
  std::uint64_t bytes;
};

constexpr std::uint64_t kKilo = 1000;
constexpr std::uint64_t kKibi = 1024;

// A size's letters in lower case, without a "b" at their end.
constexpr Unit kUnits[] = {
    {"", 1},
    {"k", kKilo},
    {"ki", kKibi},
    {"m", kKilo* kKilo},
    {"mi", kKibi* kKibi},
    {"g", kKilo* kKilo* kKilo},
    {"gi", kKibi* kKibi* kKibi},
    {"t", kKilo* kKilo* kKilo* kKilo},
    {"ti", kKibi* kKibi* kKibi* kKibi},
};

const Unit* findUnit(std::string name) {
  name.erase(0, std::min(name.find_first_not_of(' '), name.size()));
  name = CLI::detail::to_lower(name);
  if (name.ends_with('b')) {
    name.pop_back();
  }
  const auto* found = std::find_if(std::begin(kUnits), std::end(kUnits),
                                   [&name](const Unit& unit) { return unit.name == name; });
  return found == std::end(kUnits) ? nullptr : found;
}

// Sizes become bytes, "none" the largest number.
std::string readSize(std::string& text) {
  if (text == "none") {
    text = std::to_string(OutputLimit::kNone);
    return "";
  }
  std::uint64_t count = 0;
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), count);
  const Unit* unit = findUnit(end);
  if (problem == std::errc::invalid_argument || unit == nullptr) {
    return "'" + text + "' is no size; give whole bytes, a size like 500MB or 2GiB, or none";
  }
  if (problem != std::errc() || count > UINT64_MAX / unit->bytes) {
    return text + " is too large; for no limit give none";
  }
  text = std::to_string(count * unit->bytes);
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

CLI::Option* addOutputOptions(CLI::App& commandLine, OutputOptions& options,
                              const std::string& purpose) {
  CLI::Option* output = commandLine.add_option("-o,--output", options.name, purpose)
                            ->type_name("FILE")
                            ->check(checkOutput);
  commandLine
      .add_flag("--force", options.force,
                "Replace whatever has the name that the document gets without --output (json)")
      ->disable_flag_override()
      ->excludes(output);
  addMaxOutput(commandLine, options.maxSize);
  return output;
}

}  // namespace vyn::host
