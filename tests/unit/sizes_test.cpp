#include "cli/sizes.h"

#include <gtest/gtest.h>

namespace vyn::cli {
namespace {

TEST(ParseSize, TakesBytesAndUnits) {
  const struct {
    const char* text;
    std::uint64_t bytes;
  } kSizes[] = {
      {"0", 0},
      {"17", 17},
      {"17B", 17},
      {"3KB", 3'000},
      {"3k", 3'000},
      {"500 mb", 500'000'000},
      {"2GiB", 2'147'483'648},
      {"2gi", 2'147'483'648},
      {"1TiB", 1'099'511'627'776},
      {"18446744073709551615", UINT64_MAX},
      {"18446744073709551KB", 18'446'744'073'709'551'000U},
  };
  for (const auto& [text, bytes] : kSizes) {
    const ParsedSize size = parseSize(text);
    EXPECT_EQ(size.problem, std::errc()) << text;
    EXPECT_EQ(size.bytes, bytes) << text;
  }
}

TEST(ParseSize, RefusesWhatIsNoSize) {
  for (const char* text : {"", "MB", "-1", "+1", "1.5MB", " 1", "0x10", "5QB", "1KBB"}) {
    EXPECT_EQ(parseSize(text).problem, std::errc::invalid_argument) << text;
  }
}

TEST(ParseSize, TellsWhatIsTooLarge) {
  for (const char* text : {"18446744073709551616", "18446744073709552KB", "16777216TiB"}) {
    EXPECT_EQ(parseSize(text).problem, std::errc::result_out_of_range) << text;
  }
}

}  // namespace
}  // namespace vyn::cli
