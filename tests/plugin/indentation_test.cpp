// Indentation is written whole wherever the blocks end in which the document goes to its file.

#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <set>

#include "plugin/json_fixture.h"

namespace vyn::test {
namespace {

constexpr std::size_t kBlockSize = std::size_t{256} * 1024;  // bytes that are written at once
constexpr std::size_t kIndent = 4;                           // blanks a step
constexpr int kDepth = 20;
constexpr std::size_t kDeepestIndent = kIndent * (2 * kDepth + 4);

// A log whose document goes over a block's end among deeply indented lines; these start `shift`
// bytes further into the document than without it.
std::string logShiftedBy(std::size_t shift) {
  std::string events = "{}";
  for (int i = 0; i < 400; ++i) {
    events += ",{}";
  }
  for (int depth = 1; depth < kDepth; ++depth) {
    events = "{subEvents:[" + events + "]}";
  }
  return logOf({"{messages:[{header:{},appMetrics:{},profilingEvents:[{identifier:\"" +
                std::string(shift, 's') + "\"}," + events + "]}]}"});
}

// The same document as RapidJSON writes it into one piece of memory.
std::string writtenInOnePiece(const std::string& document) {
  rapidjson::Document parsed;
  parsed.Parse(document.c_str());
  if (parsed.HasParseError()) {
    return "no JSON";
  }
  rapidjson::StringBuffer text;
  rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(text);
  parsed.Accept(writer);
  return std::string(text.GetString(), text.GetSize()) + "\n";
}

TEST(JsonIndentation, IsWholeAtEveryPlaceOfABlocksEnd) {
  const TempFolder folder;
  std::set<std::size_t> columns;  // of the first block's end in its line
  for (std::size_t shift = 0; shift < kDeepestIndent + 20; ++shift) {
    const LoadedPlugin plugin(VYN_JSON_PLUGIN);
    const auto reader = plugin.reader(folder.add("run.log", logShiftedBy(shift)));
    ASSERT_TRUE(reader->readInputFile(false));
    ASSERT_TRUE(reader->generateOutput(folder.path("out.json")));
    const std::string document = readFile(folder.path("out.json"));
    ASSERT_GT(document.size(), kBlockSize);
    ASSERT_TRUE(document == writtenInOnePiece(document)) << "shifted by " << shift;
    columns.insert(kBlockSize - 1 - document.rfind('\n', kBlockSize - 1));
  }
  for (std::size_t column = 0; column <= kDeepestIndent; ++column) {
    EXPECT_TRUE(columns.contains(column)) << column;
  }
}

}  // namespace
}  // namespace vyn::test
