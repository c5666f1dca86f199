#include "analysis/text_identities.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vyn::profiling {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Texts, one behind the other, as a chunk has them.
class TextRow {
 public:
  void add(const std::string& text) {
    m_starts.push_back(m_bytes.size());
    const auto size = static_cast<flatbuffers::uoffset_t>(text.size());
    const auto* const start = reinterpret_cast<const std::uint8_t*>(&size);
    m_bytes.insert(m_bytes.end(), start, start + sizeof(size));
    m_bytes.insert(m_bytes.end(), text.begin(), text.end());
    m_bytes.resize((m_bytes.size() / 4 + 1) * 4);
  }

  const Bytes& bytes() const { return m_bytes; }

  const flatbuffers::String& operator[](std::size_t i) const {
    return *reinterpret_cast<const flatbuffers::String*>(&m_bytes[m_starts[i]]);
  }

 private:
  Bytes m_bytes;
  std::vector<std::size_t> m_starts;
};

TEST(TextIdentities, AreThoseOfTheTextsAndNotOfTheirPlaces) {
  for (const std::size_t size : {0U, 20U, 64U, 65U, 1000U}) {
    TextRow row;
    row.add(std::string(size, 'n') + "a");
    row.add(std::string(size, 'n') + "b");
    row.add(std::string(size, 'n') + "a");
    TextIdentities identities;
    identities.startChunk(row.bytes());
    const auto first = identities.of(row[0]);
    ASSERT_TRUE(first);
    EXPECT_EQ(identities.of(row[0]), first);
    EXPECT_NE(identities.of(row[1]), first);
    EXPECT_EQ(identities.of(row[2]), first);
  }
}

TEST(TextIdentities, ANextChunkInTheSameMemoryHasTextsOfItsOwn) {
  TextRow row;
  row.add(std::string(100, 'a'));
  Bytes bytes = row.bytes();
  const auto& text = *reinterpret_cast<const flatbuffers::String*>(bytes.data());
  TextIdentities identities;
  identities.startChunk(bytes);
  const auto first = identities.of(text);
  std::fill(bytes.begin() + 4, bytes.begin() + 104, 'b');
  identities.startChunk(bytes);
  EXPECT_NE(identities.of(text), first);
}

// Each starts four bytes behind the one before, and all are as long as half of the chunk.
TEST(TextIdentities, OfTextsThatOverlapTooMuchAreUnknown) {
  constexpr flatbuffers::uoffset_t kSize = 0x01010101;
  const Bytes bytes(2 * std::size_t{kSize} + 4096, 1);
  TextIdentities identities;
  identities.startChunk(bytes);
  const auto identityAt = [&](std::size_t i) {
    return identities.of(*reinterpret_cast<const flatbuffers::String*>(&bytes[4 * i]));
  };
  const auto first = identityAt(0);
  std::size_t known = 0;
  for (std::size_t i = 0; i < 1000; ++i) {
    known += identityAt(i) == first ? 1 : 0;
  }
  EXPECT_EQ(known, 2 * TextIdentities::kLooksAtAByte);
  EXPECT_EQ(identityAt(0), first);
  EXPECT_FALSE(identityAt(999));
}

}  // namespace
}  // namespace vyn::profiling
