#include "host/info/facts_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace vyn::host {
namespace {

using testing::HasSubstr;

std::string textOf(const profiling::LogFacts& facts) {
  std::ostringstream out;
  printFacts("run.log", facts, out);
  return out.str();
}

TEST(FactsText, MoreIdentifiersThanAreCountedAreSaid) {
  profiling::LogFacts facts;
  facts.events.identifiers = 100'000;
  EXPECT_THAT(textOf(facts), HasSubstr("\n  identifiers       100,000 different\n"));
  facts.events.mayHaveMoreIdentifiers = true;
  EXPECT_THAT(textOf(facts), HasSubstr("\n  identifiers       at least 100,000 different\n"));
}

TEST(FactsText, AMedianThatIsRoundedIsARange) {
  profiling::LogFacts facts;
  facts.chunks = {
      .count = 40'000, .smallest = 12, .median = 20'000, .largest = 40'000, .medianPrecision = 8};
  EXPECT_THAT(textOf(facts),
              HasSubstr("\n  chunks            40,000: smallest 12, median 20,000 to 20,007, "
                        "largest 40,000 bytes\n"));
}

TEST(FactsText, NumbersThatAreNotToldApartAreAddedUp) {
  profiling::LogFacts facts;
  facts.events.count = 10;
  facts.events.types = {.entries = {{.number = 7, .count = 4}}, .others = 6};
  EXPECT_THAT(textOf(facts), HasSubstr("\n  (number 7)          4  40.0 %\n"
                                       "  (others)            6  60.0 %\n"));
}

}  // namespace
}  // namespace vyn::host
