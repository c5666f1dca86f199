#include "cli/spelling.h"

#include <gtest/gtest.h>

namespace vyn::cli {
namespace {

const std::vector<std::string> kOptions = {"--output", "--reader", "--level", "-r"};

TEST(FindMeant, ForgivesALetter) {
  for (const char* word : {"--outpt", "--outputs", "--otuput", "--oupput", "--output"}) {
    EXPECT_EQ(findMeant(word, kOptions), "--output") << word;
  }
}

TEST(FindMeant, LeavesWordsThatAreFarFromAll) {
  EXPECT_EQ(findMeant("--threads", kOptions), std::nullopt);
  EXPECT_EQ(findMeant("", {"--output"}), std::nullopt);
  EXPECT_EQ(findMeant("--output", {}), std::nullopt);
}

TEST(FindMeant, TakesTheNearest) {
  EXPECT_EQ(findMeant("--lader", {"--reader", "--leader"}), "--leader");
  EXPECT_EQ(findMeant("--lexel", {"--level", "--leyel"}), "--level") << "the first of two";
}

}  // namespace
}  // namespace vyn::cli
