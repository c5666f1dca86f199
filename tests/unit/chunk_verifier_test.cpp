#include "input/chunk_verifier.h"

#include <gtest/gtest.h>
#include <profile_log_generated.h>

#include <string>
#include <vector>

#include "support/json_log.h"

namespace vyn::profiling {
namespace {

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;
using Events = Offset<flatbuffers::Vector<Offset<schema::Event>>>;

bool isSound(const std::string& bytes) {
  return isSoundChunk(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

bool isSound(const FlatBufferBuilder& builder) {
  return isSoundChunk(builder.GetBufferPointer(), builder.GetSize());
}

// Ends the buffer with one message that has these events.
void finish(FlatBufferBuilder& builder, Events events) {
  const auto header = schema::CreateMessageHeader(builder);
  const auto metrics = schema::CreateAppMetrics(builder);
  const auto message =
      schema::CreateMessage(builder, header, schema::MethodType::NONE, metrics, 0, events);
  const auto messages = builder.CreateVector(std::vector{message});
  builder.Finish(schema::CreateProfileLog(builder, 0, messages));
}

Offset<schema::Event> eventWith(FlatBufferBuilder& builder, Events subEvents) {
  schema::EventBuilder event(builder);
  if (!subEvents.IsNull()) {
    event.add_subEvents(subEvents);
  }
  return event.Finish();
}

// Events nested `levels` deep, each level naming its one sub-event vector `owners` times.
FlatBufferBuilder nested(int levels, int owners) {
  FlatBufferBuilder builder;
  Events events;
  for (int level = 0; level < levels; ++level) {
    std::vector<Offset<schema::Event>> siblings;
    siblings.reserve(static_cast<std::size_t>(owners));
    for (int owner = 0; owner < owners; ++owner) {
      siblings.push_back(eventWith(builder, events));
    }
    events = builder.CreateVector(siblings);
  }
  finish(builder, events);
  return builder;
}

const std::string kGoodChunk =
    "{header:{netRunVersion:\"2\"},messages:[{header:{},appMetrics:{},graphName:\"net\"}]}";

TEST(ChunkVerifier, AcceptsWhatTheBuilderMakes) {
  EXPECT_TRUE(isSound(test::chunkBytes(kGoodChunk)));
  EXPECT_TRUE(isSound(test::chunkBytes("{}")));
}

TEST(ChunkVerifier, RefusesFewerThanTwelveBytes) {
  const std::string smallest = test::chunkBytes("{}");
  for (std::size_t size = 0; size < 12; ++size) {
    EXPECT_FALSE(isSound(smallest.substr(0, size))) << size;
  }
}

TEST(ChunkVerifier, RefusesImpossibleSizesBeforeLookingAtAnyByte) {
  EXPECT_FALSE(isSoundChunk(nullptr, 0x7FFFFFFF));
  EXPECT_FALSE(isSoundChunk(nullptr, 0xFFFFFFFF));
}

TEST(ChunkVerifier, RefusesEveryPrefixThatCutsATable) {
  const std::string chunk = test::chunkBytes(kGoodChunk);
  for (std::size_t size = 0; size + 8 < chunk.size(); ++size) {
    const std::vector<char> cut(chunk.begin(), chunk.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_FALSE(isSoundChunk(reinterpret_cast<const std::uint8_t*>(cut.data()), cut.size()))
        << size;
  }
}

TEST(ChunkVerifier, AcceptsUnalignedData) {
  // Everything behind the root offset moved by one byte.
  std::string chunk = test::chunkBytes(kGoodChunk);
  chunk.insert(4, 1, '\0');
  ++chunk[0];
  EXPECT_TRUE(isSound(chunk));
}

TEST(ChunkVerifier, AcceptsTablesNested64Deep) {
  // The log and the message are the first two.
  EXPECT_TRUE(isSound(nested(62, 1)));
  EXPECT_FALSE(isSound(nested(63, 1)));
}

TEST(ChunkVerifier, RefusesSubEventsSharedLevelUponLevelAtOnce) {
  // Two owners at each of 62 levels: 2^62 tables, in some two thousand bytes.
  EXPECT_FALSE(isSound(nested(62, 2)));
  EXPECT_FALSE(isSound(nested(26, 2)));
}

TEST(ChunkVerifier, AcceptsMoreThanAMillionTables) {
  FlatBufferBuilder builder;
  std::vector<Offset<schema::Event>> events(1000001);
  for (auto& event : events) {
    event = eventWith(builder, Events());
  }
  finish(builder, builder.CreateVector(events));
  EXPECT_TRUE(isSound(builder));
}

TEST(ChunkVerifier, AcceptsOneEventNamedMoreThanAMillionTimes) {
  FlatBufferBuilder builder;
  const std::vector<Offset<schema::Event>> events(1000001, eventWith(builder, Events()));
  finish(builder, builder.CreateVector(events));
  EXPECT_TRUE(isSound(builder));
}

TEST(ChunkVerifier, RefusesATextWithoutItsZeroByte) {
  std::string chunk = test::chunkBytes("{messages:[{header:{},appMetrics:{},graphName:\"net\"}]}");
  chunk[chunk.find("net") + 3] = '!';
  EXPECT_FALSE(isSound(chunk));
}

}  // namespace
}  // namespace vyn::profiling
