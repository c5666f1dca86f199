#include "logmaker/number_options.h"

#include <charconv>
#include <system_error>

#include "cli/sizes.h"

namespace vyn::logmaker {
namespace {

// The text with which a validator refuses; empty when all is well.
using Refusal = std::string;

Refusal outOfRange(const std::string& text, NumberRange range) {
  return text + " is out of range, which is " + std::to_string(range.least) + " to " +
         std::to_string(range.largest);
}

Refusal readNumber(std::string& text, NumberRange range) {
  std::uint64_t number = 0;
  const char* const last = text.data() + text.size();
  const auto [end, problem] = std::from_chars(text.data(), last, number);
  if (end != last || problem == std::errc::invalid_argument) {
    return "'" + text + "' is not a whole number";
  }
  if (problem != std::errc() || number < range.least || number > range.largest) {
    return outOfRange(text, range);
  }
  text = std::to_string(number);
  return {};
}

Refusal readSize(std::string& text, NumberRange range) {
  const cli::ParsedSize size = cli::parseSize(text);
  if (size.problem == std::errc::invalid_argument) {
    return "'" + text + "' is not a size, a whole number with or without one of the units " +
           cli::sizeUnits();
  }
  if (size.problem != std::errc() || size.bytes < range.least || size.bytes > range.largest) {
    return outOfRange(text, range) + " bytes";
  }
  text = std::to_string(size.bytes);
  return {};
}

}  // namespace

CLI::Validator wholeNumber(NumberRange range) {
  return {[range](std::string& text) { return readNumber(text, range); }, ""};
}

CLI::Validator size(NumberRange bytes) {
  return {[bytes](std::string& text) { return readSize(text, bytes); }, ""};
}

}  // namespace vyn::logmaker
