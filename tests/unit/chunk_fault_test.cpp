#include "analysis/chunk_fault.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <profile_log_generated.h>

#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "input/chunk_verifier.h"
#include "support/json_log.h"

namespace vyn::profiling {
namespace {

using testing::HasSubstr;

constexpr std::uint64_t kEnoughTables = 1000;

std::span<const std::uint8_t> bytesOf(const std::string& chunk) {
  return {reinterpret_cast<const std::uint8_t*>(chunk.data()), chunk.size()};
}

std::optional<ChunkFault> faultOf(const std::string& chunk) {
  return findChunkFault(bytesOf(chunk), kEnoughTables);
}

bool isSound(const std::string& chunk) { return ChunkVerifier().isSound(bytesOf(chunk)); }

// A chunk with each kind of field.
std::string fullChunk() {
  return test::chunkBytes(
      "{header:{timeScale:1,epochTime:2,timestamp:3,version:{major:1,versionFlag:2},"
      "netRunVersion:\"run\",backendVersion:\"back\"},"
      "messages:[{header:{},appMetrics:{}},"
      "{header:{timestamp:4,sequenceNumber:5},appMetrics:{startTime:6,metricsFlag:7},method:1,"
      "visibilityLevel:1,graphName:\"net\",profilingEvents:[{identifier:\"outer\",type:404,"
      "subEvents:[{identifier:\"inner\",valueType:4,rawData:[1,2,3],secondaryName:\"file\"},"
      "{doubleValue:1,floatValue:1,int64Value:1,stringValue:\"text\",extraValue:9}]}]}]}");
}

TEST(ChunkFault, ASoundChunkHasNone) {
  EXPECT_FALSE(faultOf(fullChunk()));
  EXPECT_FALSE(faultOf(test::chunkBytes("{}")));
}

// Whatever stands in a chunk, there is a flaw exactly where the verifier refuses it.
TEST(ChunkFault, AgreesWithTheVerifierOnEveryChangedByte) {
  const std::string chunk = fullChunk();
  int refused = 0;
  for (std::size_t place = 0; place < chunk.size(); ++place) {
    for (int value = 0; value < 256; ++value) {
      std::string changed = chunk;
      changed[place] = static_cast<char>(value);
      EXPECT_EQ(!faultOf(changed), isSound(changed)) << place << " " << value;
      refused += faultOf(changed) ? 1 : 0;
    }
  }
  EXPECT_GT(refused, 1000);
}

TEST(ChunkFault, AgreesWithTheVerifierOnEveryFourBytes) {
  const std::string chunk = fullChunk();
  for (const char* value : {"\xff\xff\xff\xff", "\xff\xff\xff\x7f", "\0\0\0\x80", "\0\0\1\0"}) {
    for (std::size_t place = 0; place + 4 <= chunk.size(); ++place) {
      std::string changed = chunk;
      changed.replace(place, 4, value, 4);
      EXPECT_EQ(!faultOf(changed), isSound(changed)) << place;
    }
  }
}

TEST(ChunkFault, AgreesWithTheVerifierOnEveryLength) {
  const std::string chunk = fullChunk();
  for (std::size_t size = 0; size < chunk.size(); ++size) {
    // By itself, so that the sanitizers see what is read behind its end.
    const std::vector<char> cut(chunk.begin(), chunk.begin() + static_cast<std::ptrdiff_t>(size));
    const std::string text(cut.begin(), cut.end());
    EXPECT_EQ(!faultOf(text), isSound(text)) << size;
  }
}

TEST(ChunkFault, ImpossibleSizesAreToldWithoutAnyByte) {
  const std::uint8_t* const noBytes = nullptr;
  for (const std::size_t size : {std::size_t{0}, std::size_t{11}, std::size_t{0x7FFFFFFF}}) {
    const auto fault = findChunkFault({noBytes, size}, kEnoughTables);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->code, CheckCode::kReachesOut);
    EXPECT_EQ(fault->evidence.found, "a chunk of " + std::to_string(size) + " bytes");
  }
}

// The chunk's bytes with its one text "name", and the offset of that text.
struct NamedChunk {
  std::string bytes = test::chunkBytes(
      "{messages:[{header:{},appMetrics:{}},{header:{},appMetrics:{},"
      "profilingEvents:[{subEvents:[{identifier:\"name\"}]}]}]}");
  std::size_t text = bytes.find("name") - 4;  // its length

  std::size_t offset() const {
    for (std::size_t place = text - 4; place > 0; --place) {
      std::uint32_t offset = 0;
      std::memcpy(&offset, bytes.data() + place, sizeof(offset));
      if (place + offset == text) {
        return place;
      }
    }
    return 0;
  }
};

TEST(ChunkFault, ATextTellsItsFieldAndItsMessage) {
  NamedChunk chunk;
  chunk.bytes[chunk.text + 8] = '!';
  const auto fault = faultOf(chunk.bytes);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->code, CheckCode::kUnendedText);
  EXPECT_EQ(fault->position, chunk.text + 8);
  EXPECT_EQ(fault->message, 2U);
  EXPECT_EQ(fault->evidence.found,
            "Event.identifier, which ends at byte " + std::to_string(chunk.text + 8));
}

TEST(ChunkFault, AnOffsetTellsWhatItIsAndMayBe) {
  NamedChunk chunk;
  const std::size_t place = chunk.offset();
  for (const auto& [bytes, number] : std::vector<std::pair<std::string, std::string>>{
           {std::string(4, '\0'), "0"}, {"\xff\xff\xff\xff", "4294967295"}}) {
    chunk.bytes.replace(place, 4, bytes);
    const auto fault = faultOf(chunk.bytes);
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->code, CheckCode::kOffsetOut);
    EXPECT_EQ(fault->position, place);
    EXPECT_EQ(fault->evidence.found, "the offset of Event.identifier is " + number);
    EXPECT_EQ(fault->evidence.expected,
              "1 or more, but less than " + std::to_string(chunk.bytes.size() - place));
  }
}

TEST(ChunkFault, ALengthTellsHowManyElements) {
  NamedChunk chunk;
  chunk.bytes.replace(chunk.text, 4, "\xff\xff\xff\xff");
  const auto fault = faultOf(chunk.bytes);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->code, CheckCode::kReachesOut);
  EXPECT_EQ(fault->position, chunk.text);
  EXPECT_THAT(fault->evidence.found, HasSubstr(" has 4294967295 elements of 1 byte"));
  EXPECT_THAT(fault->evidence.expected,
              HasSubstr("the chunk of " + std::to_string(chunk.bytes.size()) + " bytes"));
}

TEST(ChunkFault, AnElementOfAListTellsItsNumber) {
  flatbuffers::FlatBufferBuilder builder;
  const auto message =
      schema::CreateMessage(builder, schema::CreateMessageHeader(builder), schema::MethodType::NONE,
                            schema::CreateAppMetrics(builder));
  const auto messages = builder.CreateVector(std::vector(3, message));
  builder.Finish(schema::CreateProfileLog(builder, 0, messages));
  std::string chunk(reinterpret_cast<const char*>(builder.GetBufferPointer()), builder.GetSize());
  const auto* list = schema::GetProfileLog(chunk.data())->messages();
  const auto place = static_cast<std::size_t>(reinterpret_cast<const char*>(list->Data()) -
                                              chunk.data() + std::ptrdiff_t{2} * 4);
  chunk.replace(place, 4, std::string("\0\1\0\0", 4));
  const auto fault = faultOf(chunk);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->code, CheckCode::kOffsetOut);
  EXPECT_EQ(fault->position, place);
  EXPECT_EQ(fault->message, 3U);
  EXPECT_EQ(fault->evidence.found, "element 3 of ProfileLog.messages is 256");
}

TEST(ChunkFault, MoreTablesThanAllowedAreTold) {
  const std::string chunk = fullChunk();
  // The root, the header, its version; twice a message with two tables; three events.
  EXPECT_FALSE(findChunkFault(bytesOf(chunk), 12));
  const auto fault = findChunkFault(bytesOf(chunk), 11);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->code, CheckCode::kTooManyTables);
  EXPECT_THAT(fault->evidence.found, HasSubstr("more than 11 tables"));
}

}  // namespace
}  // namespace vyn::profiling
