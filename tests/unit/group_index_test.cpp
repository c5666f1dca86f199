#include "input/group_index.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

namespace vyn::profiling {
namespace {

class GroupIndexTest : public testing::Test {
 protected:
  void startChunk(const std::string& bytes) {
    m_chunk = bytes;
    m_fingerprints.startChunk(
        {reinterpret_cast<const std::uint8_t*>(m_chunk.data()), m_chunk.size()});
  }

  void add(std::size_t start, std::size_t length) {
    m_index.add(m_groups, std::string_view(m_chunk).substr(start, length), m_fingerprints, {});
  }

  std::string m_chunk;
  TextFingerprints m_fingerprints;
  GroupIndex m_index;
  std::vector<ExecutionGroup> m_groups;
};

// From the second name on, more bytes are named than the chunk has.
TEST_F(GroupIndexTest, LongNamesAreToldApartByEveryByte) {
  startChunk(std::string(5'000, 'x') + "y" + std::string(5'000, 'x'));
  for (const std::size_t start : {0U, 1U, 4'000U, 4'001U, 5'001U, 0U, 4'001U}) {
    add(start, 3'000);
  }
  ASSERT_EQ(m_groups.size(), 3U);  // only x; y as byte 1,000; y as byte 999
  EXPECT_EQ(m_groups[0].records.size(), 4U);
  EXPECT_EQ(m_groups[0].name, std::string(3'000, 'x'));
  EXPECT_EQ(m_groups[1].name, std::string(1'000, 'x') + "y" + std::string(1'999, 'x'));
  EXPECT_EQ(m_groups[2].records.size(), 2U);
}

TEST_F(GroupIndexTest, LongNamesAreToldApartByLengthAndZeroBytes) {
  startChunk(std::string(20'000, '\0'));
  for (int round = 0; round < 20; ++round) {
    for (const std::size_t length : {255U, 256U, 257U, 1'000U, 5'000U}) {
      add(static_cast<std::size_t>(round) * 7, length);
    }
  }
  ASSERT_EQ(m_groups.size(), 5U);
  for (const ExecutionGroup& group : m_groups) {
    EXPECT_EQ(group.records.size(), 20U);
  }
}

TEST_F(GroupIndexTest, NamesOfLaterChunksFindTheirGroups) {
  for (int round = 0; round < 3; ++round) {
    startChunk(std::string(static_cast<std::size_t>(round), 'a') + std::string(4'000, 'b'));
    for (int time = 0; time < 5; ++time) {
      add(static_cast<std::size_t>(round), 4'000);
    }
  }
  ASSERT_EQ(m_groups.size(), 1U);
  EXPECT_EQ(m_groups[0].records.size(), 15U);
}

// Seconds of this process's own processor time.
double userTime() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_utime.tv_sec) +
         static_cast<double>(usage.ru_utime.tv_usec) * 1e-6;
}

// Each name is copied into its group: that is all that is done with all its bytes.
TEST_F(GroupIndexTest, DifferentOverlappingNamesTakeLittleMoreTimeThanTheirCopies) {
  constexpr std::size_t kNames = 200;
  startChunk(std::string(1'000'000, 'x'));
  const double start = userTime();
  std::vector<std::string> copies;
  for (std::size_t i = 0; i < kNames; ++i) {
    copies.push_back(m_chunk.substr(i));
  }
  const double copied = userTime();
  copies = {};
  const double freed = userTime();
  for (std::size_t i = 0; i < kNames; ++i) {
    add(i, m_chunk.size() - i);
  }
  const double added = userTime();
  EXPECT_EQ(m_groups.size(), kNames);
  EXPECT_LT(added - freed, 3 * (copied - start) + 0.15);  // looking at each byte takes far longer
}

}  // namespace
}  // namespace vyn::profiling
