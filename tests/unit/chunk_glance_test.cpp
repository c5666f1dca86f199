#include "input/chunk_glance.h"

#include <gtest/gtest.h>

#include <string>

#include "support/json_log.h"

namespace vyn::profiling {
namespace {

bool looksLikeChunk(const std::string& log) {
  MemorySource source({reinterpret_cast<const std::uint8_t*>(log.data()), log.size()});
  ByteWindow window(source, log.size());
  return looksLikeChunk(window, 0);
}

const char* const kMessage = "{messages:[{header:{},appMetrics:{}}]}";

TEST(ChunkGlance, ChunksThatSaySomethingLookLikeIt) {
  for (const char* json :
       {kMessage, "{header:{backendVersion:\"1\"}}", "{header:{epochTime:1},messages:[]}",
        "{header:{},messages:[{header:{},appMetrics:{}}]}"}) {
    EXPECT_TRUE(looksLikeChunk(test::logOf({json}))) << json;
  }
}

TEST(ChunkGlance, OthersDoNot) {
  EXPECT_FALSE(looksLikeChunk(test::logOf({"{}"})));
  EXPECT_FALSE(looksLikeChunk(test::logOf({"{messages:[]}"})));
  EXPECT_FALSE(looksLikeChunk(""));
  EXPECT_FALSE(looksLikeChunk(std::string(100, '\0')));
  EXPECT_FALSE(looksLikeChunk(std::string(100, '\x0c')));
}

TEST(ChunkGlance, AChunkMustFitIntoTheLog) {
  const std::string chunk = test::logOf({kMessage});
  for (std::size_t size = 0; size < chunk.size(); ++size) {
    EXPECT_FALSE(looksLikeChunk(chunk.substr(0, size))) << size;
  }
}

// Each number that leads to a message, made to lead out of the chunk.
TEST(ChunkGlance, WhatLeadsNowhereIsNoChunk) {
  const std::string chunk = test::logOf({kMessage});
  std::size_t refused = 0;
  for (std::size_t place = 4; place + 4 <= chunk.size(); place += 2) {
    refused += looksLikeChunk(std::string(chunk).replace(place, 4, "\xf0\xf0\xf0\x70")) ? 0 : 1;
  }
  EXPECT_GE(refused, 15);
}

}  // namespace
}  // namespace vyn::profiling
