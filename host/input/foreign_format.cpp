#include "host/input/foreign_format.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>

namespace vyn::host {
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

std::optional<std::string> recogniseForeignFormat(const std::string& path) {
  constexpr std::size_t kLongestStart = 32;  // bytes
  std::string start(kLongestStart, '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(start.data(), kLongestStart);
  start.resize(static_cast<std::size_t>(file.gcount()));
  const auto* found =
      std::find_if(std::begin(kFormats), std::end(kFormats),
                   [&start](const Format& format) { return start.starts_with(format.start); });
  if (found == std::end(kFormats)) {
    return std::nullopt;
  }
  return found->explanation;
}

}  // namespace vyn::host
