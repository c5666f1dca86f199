// Long texts of one chunk are never taken for those of another, though the chunks' bytes often
// stand at the same address one after another.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/loaded_plugin.h"
#include "support/log_message.h"
#include "support/temp_folder.h"
#include "support/text_file.h"

namespace vyn::test {
namespace {

constexpr int kChunkCount = 12;

// A text that differs from chunk to chunk and from place to place, but not in length.
std::string textOf(int chunk, int place, std::size_t length) {
  std::string text = "chunk " + std::to_string(100 + chunk) + " place " + std::to_string(place);
  return text + std::string(length - text.size(), static_cast<char>('a' + chunk));
}

std::string chunkWith(int chunk, std::size_t length) {
  const Events events = {text(textOf(chunk, 1, length), textOf(chunk, 2, length)),
                         {.identifier = textOf(chunk, 3, length)}};
  return chunkOf({{.events = events}}, "{backendVersion:\"" + textOf(chunk, 0, length) + "\"}");
}

// The texts of that key, in document order.
std::vector<std::string> textsOf(const std::string& key, const std::string& document) {
  const std::string start = "\"" + key + "\": \"";
  std::vector<std::string> texts;
  for (std::size_t at = document.find(start); at != std::string::npos;
       at = document.find(start, at)) {
    at += start.size();
    texts.push_back(document.substr(at, document.find('"', at) - at));
  }
  return texts;
}

// Unmasked, for that takes long where texts are large.
std::string largeDocumentOf(const LoadedPlugin& plugin, const TempFolder& folder,
                            const std::string& log) {
  const auto reader = plugin.reader(folder.add("run.log", log));
  EXPECT_TRUE(reader->readInputFile(false));
  EXPECT_TRUE(reader->generateOutput(folder.path("out.json")));
  return readFile(folder.path("out.json"));
}

TEST(JsonLongText, ChunksOfEqualSizeKeepTheirOwn) {
  for (const std::size_t length : {257U, 300U, 5000U, 300000U}) {
    const LoadedPlugin plugin(VYN_JSON_PLUGIN);
    const TempFolder folder;
    std::string log;
    std::vector<std::string> identifiers;
    std::vector<std::string> values;
    for (int chunk = 0; chunk < kChunkCount; ++chunk) {
      log += logOf({chunkWith(chunk, length)});
      identifiers.push_back(textOf(chunk, 1, length));
      identifiers.push_back(textOf(chunk, 3, length));
      values.push_back(textOf(chunk, 2, length));
    }
    const std::string document = largeDocumentOf(plugin, folder, log);
    EXPECT_TRUE(textsOf("backendVersion", document) == std::vector{textOf(0, 0, length)}) << length;
    EXPECT_TRUE(textsOf("identifier", document) == identifiers) << length;
    EXPECT_TRUE(textsOf("value", document) == values) << length;
  }
}

TEST(JsonLongText, ThoseAtOnePlaceOfEachChunkMayEndEarlier) {
  std::string log;
  std::vector<std::string> identifiers;
  for (const std::size_t length : {400U, 300U, 399U, 0U, 270U, 400U}) {
    const auto letter = static_cast<char>('a' + identifiers.size());
    const std::string identifier(400, letter);
    std::string chunk = chunkBytes(chunkOf({{.events = {{.identifier = identifier}}}}));
    chunk[chunk.find(identifier) + length] = '\0';
    log += framed(chunk);
    identifiers.push_back(identifier.substr(0, length));
  }
  const LoadedPlugin plugin(VYN_JSON_PLUGIN);
  EXPECT_EQ(textsOf("identifier", largeDocumentOf(plugin, TempFolder(), log)), identifiers);
}

}  // namespace
}  // namespace vyn::test
