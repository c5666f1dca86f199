// Fields that readers leave alone must lie inside their chunk all the same.

#include <profile_log_generated.h>

#include "plugin/json_fixture.h"

namespace vyn::test {
namespace {

namespace schema = profiling::schema;

// Says that the field in `slot` of a table of the chunk starts at byte `place` of the chunk.
template <typename Table>
void moveField(std::string& chunk, const Table* table, std::size_t slot, std::size_t place) {
  const auto* tableBytes = reinterpret_cast<const std::uint8_t*>(table);
  const auto tablePlace =
      static_cast<std::size_t>(reinterpret_cast<const char*>(table) - chunk.data());
  const auto vtableDistance = flatbuffers::ReadScalar<flatbuffers::soffset_t>(tableBytes);
  const auto vtablePlace = static_cast<std::size_t>(static_cast<std::ptrdiff_t>(tablePlace) -
                                                    std::ptrdiff_t{vtableDistance});
  const std::size_t entry =
      vtablePlace + (2 + slot) * sizeof(flatbuffers::voffset_t);  // behind the two sizes
  flatbuffers::WriteScalar(chunk.data() + entry,
                           static_cast<flatbuffers::voffset_t>(place - tablePlace));
}

class FlagVerification : public testing::TestWithParam<const char*> {
 protected:
  bool isRead(const std::string& chunk) {
    const auto reader = m_plugin.reader(m_folder.add("run.log", framed(chunk)));
    bool isRead = false;
    printedBy([&] { isRead = reader->readInputFile(false); });
    return isRead;
  }

  // Moves the field to the chunk's last byte and then to the byte behind it.
  template <typename FindTable>
  void expectToEndInsideTheChunk(const std::string& json, std::size_t slot,
                                 const FindTable& findTable) {
    std::string chunk = chunkBytes(json);
    EXPECT_TRUE(isRead(chunk));
    moveField(chunk, findTable(*schema::GetProfileLog(chunk.data())), slot, chunk.size() - 1);
    EXPECT_TRUE(isRead(chunk));
    moveField(chunk, findTable(*schema::GetProfileLog(chunk.data())), slot, chunk.size());
    EXPECT_FALSE(isRead(chunk));
    moveField(chunk, findTable(*schema::GetProfileLog(chunk.data())), slot, chunk.size() + 5000);
    EXPECT_FALSE(isRead(chunk));
  }

  TempFolder m_folder;
  LoadedPlugin m_plugin{GetParam()};
};

TEST_P(FlagVerification, MetricsFlagLiesInsideTheChunk) {
  expectToEndInsideTheChunk(
      "{messages:[{header:{},appMetrics:{metricsFlag:1},method:APP_CONTEXT_CREATE}]}", 4,
      [](const schema::ProfileLog& log) { return log.messages()->Get(0)->appMetrics(); });
}

TEST_P(FlagVerification, VersionFlagLiesInsideTheChunk) {
  expectToEndInsideTheChunk("{header:{version:{versionFlag:1}}}", 3,
                            [](const schema::ProfileLog& log) { return log.header()->version(); });
}

INSTANTIATE_TEST_SUITE_P(BothReaders, FlagVerification,
                         testing::Values(VYN_JSON_PLUGIN, VYN_SUMMARY_PLUGIN),
                         [](const auto& test) { return test.index == 0 ? "Json" : "Summary"; });

}  // namespace
}  // namespace vyn::test
