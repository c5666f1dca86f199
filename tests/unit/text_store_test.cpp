#include "json/text_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "json/json_document.h"

namespace vyn::profiling {
namespace {

// Bytes of the pool that `store` takes.
template <typename Store>
std::size_t poolGrowth(const Store& store) {
  const std::size_t before = g_jsonDocument.GetAllocator().Size();
  store();
  return g_jsonDocument.GetAllocator().Size() - before;
}

// A chunk's bytes, into which strings are laid at any place.
class Chunk {
 public:
  explicit Chunk(std::size_t size) : m_bytes(size, 'x') { m_bytes.back() = '\0'; }

  void add(std::size_t place, std::uint32_t length) {
    std::memcpy(m_bytes.data() + place, &length, sizeof(length));
  }
  void endTextAt(std::size_t place) { m_bytes[place] = '\0'; }

  const flatbuffers::String& text(std::size_t place) const {
    return *reinterpret_cast<const flatbuffers::String*>(m_bytes.data() + place);
  }
  const std::uint8_t* data() const { return m_bytes.data(); }
  std::size_t size() const { return m_bytes.size(); }

 private:
  std::vector<std::uint8_t> m_bytes;
};

TEST(TextStore, EqualShortTextsAreCopiedOnceInAllChunks) {
  TextStore texts;
  const Chunk first = [] {
    Chunk chunk(305);
    chunk.add(0, 100);
    chunk.endTextAt(104);
    chunk.add(200, 100);
    return chunk;
  }();
  texts.startChunk(first.data());
  const std::string_view copy = texts.store(first.text(0));
  EXPECT_EQ(copy, std::string(100, 'x'));
  const Chunk second = first;
  texts.startChunk(second.data());
  EXPECT_EQ(poolGrowth([&] { EXPECT_EQ(texts.store(second.text(200)).data(), copy.data()); }), 0U);
}

TEST(TextStore, LongTextIsCopiedOnceForItsPlace) {
  constexpr std::uint32_t kLength = 1'000'000;
  Chunk chunk(kLength + 5);
  chunk.add(0, kLength);
  TextStore texts;
  texts.startChunk(chunk.data());
  const std::size_t growth = poolGrowth([&] {
    for (int i = 0; i < 1000; ++i) {
      ASSERT_EQ(texts.store(chunk.text(0)).size(), kLength);
    }
  });
  EXPECT_LT(growth, kLength + 100);
}

TEST(TextStore, LongTextsEndAtTheirFirstZeroByte) {
  Chunk chunk(1005);
  chunk.add(0, 1000);
  chunk.endTextAt(304);
  TextStore texts;
  texts.startChunk(chunk.data());
  EXPECT_EQ(texts.store(chunk.text(0)), std::string(300, 'x'));
}

TEST(TextStore, PlacesOfAnEarlierChunkMeanNothing) {
  Chunk chunk(305);
  chunk.add(0, 300);
  TextStore texts;
  texts.startChunk(chunk.data());
  texts.store(chunk.text(0));
  chunk.endTextAt(303);  // the next chunk often stands at the same address
  texts.startChunk(chunk.data());
  EXPECT_EQ(texts.store(chunk.text(0)), std::string(299, 'x'));
}

TEST(TextStore, OverlappingTextsTakeNoMoreThanTheChunk) {
  // Their lengths have no zero byte, so that each text runs on through the next one's length.
  constexpr std::size_t kFirstLength = 0x0101FFFF;
  constexpr std::size_t kStep = 4;  // of which no length gets a zero byte
  Chunk chunk(kFirstLength + 5);
  std::vector<std::size_t> places;
  for (std::size_t place = 0; place < 100 * kStep; place += kStep) {
    chunk.add(place, static_cast<std::uint32_t>(kFirstLength - place));
    places.push_back(place);
  }
  for (const bool isReversed : {false, true}) {
    if (isReversed) {
      std::reverse(places.begin(), places.end());
    }
    TextStore texts;
    texts.startChunk(chunk.data());
    const std::size_t growth = poolGrowth([&] {
      for (const std::size_t place : places) {
        const std::string_view copy = texts.store(chunk.text(place));
        ASSERT_EQ(copy.size(), kFirstLength - place);
        ASSERT_EQ(copy, chunk.text(place).string_view());
      }
    });
    EXPECT_LT(growth, chunk.size() + 100);
  }
}

}  // namespace
}  // namespace vyn::profiling
