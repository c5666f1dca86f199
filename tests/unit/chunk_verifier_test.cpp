#include "input/chunk_verifier.h"

#include <gtest/gtest.h>
#include <profile_log_generated.h>

#include <ctime>
#include <string>
#include <vector>

#include "input/table_count.h"
#include "support/json_log.h"

namespace vyn::profiling {
namespace {

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;
using Events = Offset<flatbuffers::Vector<Offset<schema::Event>>>;

bool isSound(const std::string& bytes) {
  return ChunkVerifier().isSound(
      {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

bool isSound(const FlatBufferBuilder& builder) {
  return ChunkVerifier().isSound({builder.GetBufferPointer(), builder.GetSize()});
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

// Events nested `depth` deep, at each depth naming their one sub-event vector `owners` times.
FlatBufferBuilder nested(int depth, int owners) {
  FlatBufferBuilder builder;
  Events events;
  for (int i = 0; i < depth; ++i) {
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

constexpr std::size_t kSharingChunkSize = 8192;  // bytes

// A small chunk that names exactly `tables` tables, most of them through sub-events that are shared
// again and again.
std::vector<std::uint8_t> withTables(std::uint64_t tables) {
  constexpr std::uint64_t kTablesAround = 4;  // the log, the message, its header and its metrics
  constexpr int kDepth = 20;
  FlatBufferBuilder builder;
  // Each list names one event twice, which has the list before it.
  std::vector<Events> lists{Events()};
  for (int depth = 1; depth <= kDepth; ++depth) {
    const auto event = eventWith(builder, lists.back());
    lists.push_back(builder.CreateVector(std::vector{event, event}));
  }
  std::uint64_t missing = tables - kTablesAround;
  std::vector<Offset<schema::Event>> events;
  for (int depth = kDepth; depth >= 0; --depth) {
    const auto event = eventWith(builder, lists[static_cast<std::size_t>(depth)]);
    const std::uint64_t count = (std::uint64_t{2} << depth) - 1;  // with all that is below it
    for (; missing >= count; missing -= count) {
      events.push_back(event);
    }
  }
  finish(builder, builder.CreateVector(events));
  std::vector<std::uint8_t> chunk(builder.GetBufferPointer(),
                                  builder.GetBufferPointer() + builder.GetSize());
  EXPECT_LE(chunk.size(), kSharingChunkSize);
  chunk.resize(kSharingChunkSize);
  return chunk;
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
  const std::uint8_t* const noBytes = nullptr;
  EXPECT_FALSE(ChunkVerifier().isSound({noBytes, 0x7FFFFFFF}));
  EXPECT_FALSE(ChunkVerifier().isSound({noBytes, 0xFFFFFFFF}));
}

TEST(ChunkVerifier, RefusesEveryPrefixThatCutsATable) {
  const std::string chunk = test::chunkBytes(kGoodChunk);
  for (std::size_t size = 0; size + 8 < chunk.size(); ++size) {
    const std::vector<std::uint8_t> cut(chunk.begin(),
                                        chunk.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_FALSE(ChunkVerifier().isSound(cut)) << size;
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

TEST(ChunkVerifier, RefusesSubEventsSharedAtEveryDepthAtOnce) {
  // Two owners at each of 62 depths: 2^62 tables, in some two thousand bytes.
  const FlatBufferBuilder bomb = nested(62, 2);
  const std::clock_t start = std::clock();
  EXPECT_FALSE(isSound(bomb));
  // Walking all of it would take centuries.
  EXPECT_LT(std::clock() - start, 5 * CLOCKS_PER_SEC);
  EXPECT_FALSE(isSound(nested(21, 2)));
}

TEST(ChunkVerifier, AcceptsASmallChunkThatSharesItsSubEvents) {
  ChunkVerifier verifier;
  EXPECT_TRUE(verifier.isSound(withTables(1'200'000)));
}

TEST(TableCount, CountsEachTableAsOftenAsItIsNamed) {
  const auto count = [](const std::string& json) {
    const std::string chunk = test::chunkBytes(json);
    return tableCount(*schema::GetProfileLog(chunk.data()));
  };
  EXPECT_EQ(count("{}"), 1U);
  EXPECT_EQ(count("{header:{}}"), 2U);
  EXPECT_EQ(count("{header:{version:{}}}"), 3U);
  EXPECT_EQ(count("{messages:[{header:{},appMetrics:{}},{header:{},appMetrics:{}}]}"), 7U);
  EXPECT_EQ(
      count("{messages:[{header:{},appMetrics:{},profilingEvents:[{},{subEvents:[{},{}]}]}]}"), 8U);
}

TEST(ChunkVerifier, AcceptsOneMessageNamedByManySlots) {
  FlatBufferBuilder builder;
  const auto message =
      schema::CreateMessage(builder, schema::CreateMessageHeader(builder), schema::MethodType::NONE,
                            schema::CreateAppMetrics(builder));
  const auto messages = builder.CreateVector(std::vector(30, message));
  builder.Finish(schema::CreateProfileLog(builder, 0, messages));
  EXPECT_TRUE(isSound(builder));
}

TEST(ChunkVerifier, AllowsATableForEachByteAndTheAllowance) {
  constexpr std::uint64_t kLimit = kSharingChunkSize + ChunkVerifier::kSharedTableAllowance;
  ChunkVerifier first;
  EXPECT_TRUE(first.isSound(withTables(kLimit)));
  ChunkVerifier second;
  EXPECT_FALSE(second.isSound(withTables(kLimit + 1)));
}

TEST(ChunkVerifier, ChunksOfALogShareTheAllowance) {
  ChunkVerifier verifier;
  const auto large = withTables(1'200'000);
  EXPECT_TRUE(verifier.isSound(large));
  EXPECT_FALSE(verifier.isSound(large));
  const auto small = withTables(200'000);
  int accepted = 0;
  for (int chunk = 0; chunk < 100; ++chunk) {
    accepted += verifier.isSound(small) ? 1 : 0;
  }
  EXPECT_EQ(accepted, 4);
}

TEST(ChunkVerifier, ATableForEachByteDrawsNothingFromTheAllowance) {
  ChunkVerifier verifier;
  for (int chunk = 0; chunk < 100; ++chunk) {
    EXPECT_TRUE(verifier.isSound(withTables(kSharingChunkSize)));
  }
  EXPECT_TRUE(
      verifier.isSound(withTables(kSharingChunkSize + ChunkVerifier::kSharedTableAllowance)));
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
