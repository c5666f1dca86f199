#include "input/foreign_start.h"

#include <flatbuffers/base.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace vyn::profiling {
namespace {

using namespace std::string_view_literals;

struct Format {
  std::string_view start;  // of the file
  const char* explanation;
};

constexpr char kGzip[] = "is compressed with gzip; unpack it first: gunzip";
constexpr char kZip[] = "is a zip archive; unpack it first: unzip";
constexpr char kJson[] = "looks like JSON, not like a log; is it the output of one?";
constexpr char kListing[] = "is a CSV listing, not a log; give the log that it was made of";

constexpr Format kFormats[] = {
    {"\x1f\x8b"sv, kGzip},
    {"PK\x03\x04"sv, kZip},
    {"\x28\xb5\x2f\xfd"sv, "is compressed with zstd; unpack it first: unzstd"},
    {"\xfd\x37zXZ\0"sv, "is compressed with xz; unpack it first: unxz"},
    {"BZh"sv, "is compressed with bzip2; unpack it first: bunzip2"},
    {"{\n"sv, kJson},
    {"{\""sv, kJson},
    {"{ "sv, kJson},
    {"[\n"sv, kJson},
    {"[{"sv, kJson},
    {"input log file location, "sv, kListing},
};

// A number of the file, little-endian, as in zip archives and in logs.
template <typename Number>
Number numberAt(std::size_t position, std::string_view start) {
  return flatbuffers::ReadScalar<Number>(start.data() + position);
}

// A zip archive that was written without options has, where a log has the place of its first table,
// a number that fits one. Only in the archive there is the length of a name further on.
bool isZip(std::string_view start) {
  constexpr std::size_t kNameLength = 26;
  constexpr std::uint16_t kLongestName = 4096;
  if (!start.starts_with("PK") || start.size() < kNameLength + sizeof(std::uint16_t)) {
    return false;
  }
  const auto length = numberAt<std::uint16_t>(kNameLength, start);
  return length > 0 && length <= kLongestName;
}

// A chunk of less than 64 KB, or one whose first table stands near its beginning, as builders put
// it, and where no known format has such a number.
bool startsLikeLog(std::string_view start) {
  constexpr std::uint32_t kFarthestTable = 256;
  constexpr std::size_t kShortLength = 2;
  constexpr std::size_t kFirstTable = sizeof(std::uint32_t);
  if (start.size() >= kFirstTable && numberAt<std::uint16_t>(kShortLength, start) == 0) {
    return true;
  }
  if (start.size() < kFirstTable + sizeof(std::uint32_t) || isZip(start)) {
    return false;
  }
  const auto table = numberAt<std::uint32_t>(kFirstTable, start);
  return table > 0 && table <= kFarthestTable && table % sizeof(std::uint32_t) == 0;
}

}  // namespace

std::optional<std::string> recogniseForeignStart(std::string_view start) {
  if (startsLikeLog(start)) {
    return std::nullopt;
  }
  const auto* found =
      std::find_if(std::begin(kFormats), std::end(kFormats),
                   [start](const Format& format) { return start.starts_with(format.start); });
  return found == std::end(kFormats) ? std::nullopt
                                     : std::optional<std::string>(found->explanation);
}

bool looksLikeText(std::string_view start) {
  const auto isOfText = [](char byte) {
    return (byte >= ' ' && byte <= '~') || byte == '\n' || byte == '\r' || byte == '\t';
  };
  return !start.empty() && std::all_of(start.begin(), start.end(), isOfText);
}

}  // namespace vyn::profiling
