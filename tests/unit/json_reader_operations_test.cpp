// The JSON reader's operations one by one, as derived readers may call them.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "core/vyn_profile_log_reader_json.h"
#include "support/json_log.h"

namespace vyn::profiling {
namespace {

// Stands before the first message of one chunk.
class StandingReader : public VynProfileLogReaderJSON {
 public:
  explicit StandingReader(const std::string& chunkJson)
      : VynProfileLogReaderJSON("run.log", VisibilityLevel{127}) {
    const std::string bytes = test::chunkBytes(chunkJson);
    m_buffer = makeChunk(bytes.size());
    std::copy(bytes.begin(), bytes.end(), m_buffer->data());
    EXPECT_TRUE(m_flatBufferReader.load(Chunk{m_buffer, bytes.size()}));
  }

  using VynProfileLogReaderJSON::addMetadataToJson;
  using VynProfileLogReaderJSON::addNextMessageToJson;
  using VynProfileLogReaderJSON::eventToJson;
  using VynProfileLogReaderJSON::m_jsonRoot;
  using VynProfileLogReaderJSON::m_metadataAdded;
  using VynProfileLogReaderJSON::m_reachedEof;
  using VynProfileLogReaderJSON::nextMessage;

 private:
  ChunkBuffer m_buffer;
};

const std::string kLongText(300, 'x');  // bytes that are known by their place in a chunk

TEST(JsonReaderOperations, AnEventBecomesAnObjectWithItsSubEvents) {
  StandingReader reader("{messages:[{header:{},appMetrics:{},profilingEvents:[{identifier:\"" +
                        kLongText + "\",type:\"NODE\",subEvents:[{identifier:\"inner\"}]}]}]}");
  const auto* event = reader.nextMessage()->profilingEvents()->Get(0);
  const JsonValue object = reader.eventToJson(event);
  ASSERT_TRUE(object.IsObject());
  EXPECT_EQ(object["identifier"].GetString(), kLongText);
  EXPECT_STREQ(object["type"].GetString(), "NODE");
  EXPECT_STREQ(object["sub-events"][0]["identifier"].GetString(), "inner");
}

TEST(JsonReaderOperations, MessagesAreAppendedUntilTheChunkEnds) {
  StandingReader reader("{messages:[{header:{sequenceNumber:7},appMetrics:{}}]}");
  JsonValue messages(rapidjson::kArrayType);
  EXPECT_TRUE(reader.addNextMessageToJson(messages));
  EXPECT_FALSE(reader.m_reachedEof);
  EXPECT_FALSE(reader.addNextMessageToJson(messages));
  EXPECT_TRUE(reader.m_reachedEof);
  ASSERT_EQ(messages.Size(), 1U);
  EXPECT_EQ(messages[0]["header"]["sequenceNumber"].GetUint64(), 7U);
}

TEST(JsonReaderOperations, MetadataIsAddedFromAHeaderOnly) {
  StandingReader without("{messages:[]}");
  without.addMetadataToJson();
  EXPECT_FALSE(without.m_metadataAdded);
  EXPECT_FALSE(without.m_jsonRoot.HasMember("metadata"));

  StandingReader with("{header:{epochTime:5,netRunVersion:\"2\",backendVersion:\"3\"}}");
  with.addMetadataToJson();
  EXPECT_TRUE(with.m_metadataAdded);
  EXPECT_EQ(with.m_jsonRoot["metadata"]["epochTime"].GetUint64(), 5U);
  EXPECT_STREQ(with.m_jsonRoot["metadata"]["inputLogFileLocation"].GetString(), "run.log");
}

}  // namespace
}  // namespace vyn::profiling
