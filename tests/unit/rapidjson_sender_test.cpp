// A message can be sent to every handler of RapidJSON, and is the same text everywhere.

#include "json/rapidjson_sender.h"

#include <gtest/gtest.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <string>

#include "json/json_document.h"
#include "json/json_text.h"
#include "json/message_to_json.h"
#include "json/value_builder.h"
#include "support/json_log.h"

namespace vyn::profiling {
namespace {

const std::string kChunk =
    "{messages:[{header:{timestamp:3,sequenceNumber:4},appMetrics:{stopMem:5},method:1,"
    "profilingEvents:[{identifier:\"a \\\"quoted\\\" name, longer than others\",unit:1,type:404,"
    "valueType:5,doubleValue:0.1,subEvents:[{},{identifier:\"short\",valueType:1,int64Value:-7},"
    "{valueType:6,stringValue:\"text\",subEvents:[]}]}]}]}";

class StringSink : public TextSink {
 public:
  void write(std::string_view text) override { m_text += text; }
  const std::string& text() const { return m_text; }

 private:
  std::string m_text;
};

class RapidJsonSenders : public testing::Test {
 protected:
  const schema::Message& message() const {
    return *schema::GetProfileLog(m_chunk.data())->messages()->Get(0);
  }

  std::string m_chunk = test::chunkBytes(kChunk);
};

std::string textOf(const JsonValue& value) {
  rapidjson::StringBuffer text;
  rapidjson::PrettyWriter writer(text);
  value.Accept(writer);
  return text.GetString();
}

TEST_F(RapidJsonSenders, SendAMessageToAWriter) {
  rapidjson::StringBuffer buffer;
  rapidjson::PrettyWriter writer(buffer);
  RapidJsonSender sender(writer);
  messageToJson(message(), sender);
  EXPECT_TRUE(writer.IsComplete());
  StringSink sink;
  JsonText text(sink);
  messageToJson(message(), text);
  text.flush();
  EXPECT_EQ(buffer.GetString(), sink.text());
}

TEST_F(RapidJsonSenders, SendAMessageToADocument) {
  TextStore texts;
  texts.startChunk(reinterpret_cast<const std::uint8_t*>(m_chunk.data()));
  ValueBuilder builder(texts);
  const JsonValue value = builder.build([&](ValueBuilder& out) { messageToJson(message(), out); });
  StringSink sink;
  JsonText text(sink);
  messageToJson(message(), text);
  text.flush();
  EXPECT_EQ(textOf(value), sink.text());
}

}  // namespace
}  // namespace vyn::profiling
