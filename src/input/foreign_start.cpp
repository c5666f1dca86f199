#include "input/foreign_start.h"

#include <algorithm>
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
    // Two bytes: a damaged log may well begin with one of these.
    {"{\n"sv, kJson},
    {"{\""sv, kJson},
    {"{ "sv, kJson},
    {"[\n"sv, kJson},
    {"[{"sv, kJson},
    {"input log file location, "sv, kListing},
};

}  // namespace

std::optional<std::string> recogniseForeignStart(std::string_view start) {
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
