#include "logmaker/number_options.h"

#include <strings.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>
#include <system_error>

namespace vyn::logmaker {
namespace {

struct Unit {
  const char* name;
  const char* shortName;
  std::uint64_t bytes;
};

constexpr std::uint64_t kThousand = 1'000;
constexpr Unit kUnits[] = {
    {"B", "", 1},
    {"KB", "K", kThousand},
    {"MB", "M", kThousand* kThousand},
    {"GB", "G", kThousand* kThousand* kThousand},
    {"TB", "T", kThousand* kThousand* kThousand* kThousand},
    {"KiB", "Ki", std::uint64_t{1} << 10},
    {"MiB", "Mi", std::uint64_t{1} << 20},
    {"GiB", "Gi", std::uint64_t{1} << 30},
    {"TiB", "Ti", std::uint64_t{1} << 40},
};

// The text with which a validator refuses; empty when all is well.
using Refusal = std::string;

Refusal outOfRange(const std::string& text, NumberRange range) {
  return text + " is out of range, which is " + std::to_string(range.least) + " to " +
         std::to_string(range.largest);
}

// Reads digits alone, into `number`.
std::errc parse(std::string_view digits, std::uint64_t& number) {
  const auto [end, error] = std::from_chars(digits.begin(), digits.end(), number);
  return error == std::errc() && end != digits.end() ? std::errc::invalid_argument : error;
}

const Unit* findUnit(const std::string& name) {
  const auto* found = std::find_if(std::begin(kUnits), std::end(kUnits), [&name](const Unit& unit) {
    return strcasecmp(name.c_str(), unit.name) == 0 ||
           strcasecmp(name.c_str(), unit.shortName) == 0;
  });
  return found == std::end(kUnits) ? nullptr : found;
}

Refusal readNumber(std::string& text, NumberRange range) {
  std::uint64_t number = 0;
  const std::errc error = parse(text, number);
  if (error == std::errc::invalid_argument) {
    return "'" + text + "' is not a whole number";
  }
  if (error != std::errc() || number < range.least || number > range.largest) {
    return outOfRange(text, range);
  }
  text = std::to_string(number);
  return {};
}

Refusal readSize(std::string& text, NumberRange range) {
  const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
  const std::size_t name = std::min(text.find_first_not_of(' ', digits), text.size());
  const Unit* unit = findUnit(text.substr(name));
  std::uint64_t number = 0;
  const std::errc error = parse(std::string_view(text).substr(0, digits), number);
  if (unit == nullptr || error == std::errc::invalid_argument) {
    return "'" + text + "' is not a size, a whole number with or without one of the units " +
           sizeUnits();
  }
  if (error != std::errc() || number > range.largest / unit->bytes ||
      number * unit->bytes < range.least) {
    return outOfRange(text, range) + " bytes";
  }
  text = std::to_string(number * unit->bytes);
  return {};
}

}  // namespace

CLI::Validator wholeNumber(NumberRange range) {
  return {[range](std::string& text) { return readNumber(text, range); }, ""};
}

CLI::Validator size(NumberRange bytes) {
  return {[bytes](std::string& text) { return readSize(text, bytes); }, ""};
}

std::string sizeUnits() {
  std::string names;
  for (const Unit& unit : kUnits) {
    names += (names.empty() ? "" : ", ") + std::string(unit.name);
  }
  return names;
}

}  // namespace vyn::logmaker
