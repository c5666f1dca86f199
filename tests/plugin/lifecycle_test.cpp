// What a reader does out of order: after its read, and after a read that failed.

#include <gtest/gtest.h>
#include <profile_log_generated.h>

#include <vector>

#include "support/captured_output.h"
#include "support/loaded_plugin.h"
#include "support/log_message.h"
#include "support/temp_folder.h"

namespace vyn::test {
namespace {

class Lifecycle : public testing::TestWithParam<const char*> {
 protected:
  TempFolder m_folder;
  LoadedPlugin m_plugin{GetParam()};
};

const std::string kChunk =
    chunkOf({deInit(), deInit()}, "{netRunVersion:\"2.0.0\",backendVersion:\"1\"}");

const std::string kReadOnce = "<ms> [ ERROR ] A reader reads its log once: ";

TEST_P(Lifecycle, NoMessageIsLeftAfterTheRead) {
  const auto reader = m_plugin.reader(m_folder.add("run.log", logOf({kChunk})));
  ASSERT_TRUE(reader->readInputFile(false));
  EXPECT_FALSE(reader->processNextMessage());
  EXPECT_FALSE(reader->processNextMessage());
}

TEST_P(Lifecycle, NoMessageIsLeftAfterAFailedRead) {
  const auto reader =
      m_plugin.reader(m_folder.add("run.log", logOf({kChunk}) + framed("0123456789abcdef")));
  printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); });
  EXPECT_FALSE(reader->processNextMessage());
}

TEST_P(Lifecycle, ASecondReadIsRefused) {
  const std::string path = m_folder.add("run.log", logOf({kChunk}));
  const auto reader = m_plugin.reader(path);
  ASSERT_TRUE(reader->readInputFile(false));
  EXPECT_EQ(printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); }),
            kReadOnce + path + "\n");
}

TEST_P(Lifecycle, AReadAfterAFailedOneIsRefusedEvenIfTheLogIsMended) {
  const std::string path = m_folder.add("run.log", logOf({kChunk}) + framed("0123456789abcdef"));
  const auto reader = m_plugin.reader(path);
  printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); });
  m_folder.add("run.log", logOf({kChunk}));
  EXPECT_EQ(printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); }),
            kReadOnce + path + "\n");
}

TEST_P(Lifecycle, ALogThatWasNotThereCanBeReadOnceItIs) {
  const auto reader = m_plugin.reader(m_folder.path("run.log"));
  printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); });
  m_folder.add("run.log", logOf({kChunk}));
  EXPECT_TRUE(reader->readInputFile(false));
}

// A chunk of a few hundred bytes whose events share their sub-events: 2^18 tables.
std::string sharingChunk() {
  flatbuffers::FlatBufferBuilder builder;
  namespace schema = profiling::schema;
  flatbuffers::Offset<flatbuffers::Vector<flatbuffers::Offset<schema::Event>>> events;
  for (int depth = 0; depth < 17; ++depth) {
    schema::EventBuilder event(builder);
    if (!events.IsNull()) {
      event.add_subEvents(events);
    }
    const auto shared = event.Finish();
    events = builder.CreateVector(std::vector{shared, shared});
  }
  const auto message =
      schema::CreateMessage(builder, schema::CreateMessageHeader(builder), schema::MethodType::NONE,
                            schema::CreateAppMetrics(builder), 0, events);
  builder.Finish(schema::CreateProfileLog(builder, 0, builder.CreateVector(std::vector{message})));
  return {reinterpret_cast<const char*>(builder.GetBufferPointer()), builder.GetSize()};
}

TEST_P(Lifecycle, ChunksThatShareTablesDrawFromOneAllowance) {
  const std::string chunk = framed(sharingChunk());
  ASSERT_LT(chunk.size(), 1000U);
  std::string log;
  for (int i = 0; i < 8; ++i) {
    log += chunk;
  }
  const auto reader = m_plugin.reader(m_folder.add("run.log", log));
  printedBy([&] { EXPECT_TRUE(reader->readInputFile(false)); });
  const auto refusing = m_plugin.reader(m_folder.add("more.log", log + chunk));
  printedBy([&] { EXPECT_FALSE(refusing->readInputFile(false)); });
}

INSTANTIATE_TEST_SUITE_P(Both, Lifecycle, testing::Values(VYN_JSON_PLUGIN, VYN_SUMMARY_PLUGIN),
                         [](const auto& plugin) { return plugin.index == 0 ? "Json" : "Summary"; });

}  // namespace
}  // namespace vyn::test
