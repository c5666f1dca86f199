#include "cli/sizes.h"

#include <strings.h>

#include <algorithm>
#include <charconv>
#include <iterator>

namespace vyn::cli {
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

const Unit* findUnit(const std::string& name) {
  const auto* found = std::find_if(std::begin(kUnits), std::end(kUnits), [&name](const Unit& unit) {
    return strcasecmp(name.c_str(), unit.name) == 0 ||
           strcasecmp(name.c_str(), unit.shortName) == 0;
  });
  return found == std::end(kUnits) ? nullptr : found;
}

}  // namespace

ParsedSize parseSize(std::string_view text) {
  std::uint64_t number = 0;
  const auto [end, problem] = std::from_chars(text.begin(), text.end(), number);
  std::string_view name = text.substr(static_cast<std::size_t>(end - text.begin()));
  name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
  const Unit* unit = findUnit(std::string(name));
  if (unit == nullptr || problem == std::errc::invalid_argument) {
    return {0, std::errc::invalid_argument};
  }
  if (problem != std::errc() || number > UINT64_MAX / unit->bytes) {
    return {0, std::errc::result_out_of_range};
  }
  return {number * unit->bytes, {}};
}

std::string sizeUnits() {
  std::string names;
  for (const Unit& unit : kUnits) {
    names += (names.empty() ? "" : ", ") + std::string(unit.name);
  }
  return names;
}

}  // namespace vyn::cli
