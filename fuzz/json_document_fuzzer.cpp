// Input: one chunk. A chunk that verifies becomes text; the text, parsed back strictly, says what
// the chunk says.

#include <rapidjson/document.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "check.h"
#include "document_size.h"
#include "input/chunk_verifier.h"
#include "input/table_count.h"
#include "json/document_writer.h"
#include "json/json_document.h"
#include "json/json_text.h"
#include "json/message_to_json.h"
#include "json/value_builder.h"
#include "message_check.h"
#include "time_limit.h"

namespace {

using vyn::fuzz::check;
using vyn::profiling::g_jsonDocument;
using vyn::profiling::JsonValue;

// What events that share their sub-events may unfold to; the verifier keeps it below a bound, but
// one that is too slow to search through.
constexpr std::size_t kMaxText = std::size_t{64} * 1024 * 1024;  // bytes

class StringSink : public vyn::profiling::TextSink {
 public:
  void write(std::string_view text) override { m_text += text; }
  const std::string& text() const { return m_text; }

 private:
  std::string m_text;
};

// The text that is written without a document is the document's.
void checkDirectText(const vyn::profiling::schema::Message& message, const std::string& expected) {
  StringSink sink;
  vyn::profiling::JsonText text(sink);
  vyn::profiling::messageToJson(message, text);
  text.flush();
  check(sink.text() == expected, "the text written at once is the document's");
}

void checkMessageText(const vyn::profiling::schema::Message& message,
                      vyn::profiling::TextStore& texts) {
  vyn::profiling::ValueBuilder builder(texts);
  const JsonValue value = builder.build(
      [&](vyn::profiling::ValueBuilder& out) { vyn::profiling::messageToJson(message, out); });
  std::ostringstream text;
  vyn::profiling::BlockOutputStream blocks(text);
  vyn::profiling::DocumentWriter writer(blocks);
  const bool whole = value.Accept(writer);
  blocks.writeBlock();
  check(whole == !vyn::fuzz::hasUnwritableNumber(message), "stops at numbers alone");
  if (!whole || text.str().size() > kMaxText) {
    return;
  }
  checkDirectText(message, text.str());
  rapidjson::Document parsed;
  parsed.Parse<rapidjson::kParseFullPrecisionFlag>(text.str().c_str(), text.str().size());
  check(!parsed.HasParseError(), "the text is JSON");
  vyn::fuzz::checkMessage(parsed, message);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::uint8_t> chunk(data, data + size);  // of exactly the chunk's size
  if (!vyn::profiling::ChunkVerifier().isSound(chunk)) {
    return 0;
  }
  const auto* log = vyn::profiling::schema::GetProfileLog(chunk.data());
  const std::uint64_t tables = vyn::profiling::tableCount(*log);
  const vyn::fuzz::TimeLimit limit(size, tables);
  vyn::profiling::TextStore texts;
  texts.startChunk(chunk.data());
  if (const auto* messages = log->messages()) {
    for (const auto* message : *messages) {
      checkMessageText(*message, texts);
    }
  }
  check(vyn::fuzz::isInProportion(g_jsonDocument.GetAllocator().Size(), size, tables),
        "the document's memory is in proportion to the chunk");
  g_jsonDocument.GetAllocator().Clear();
  return 0;
}
