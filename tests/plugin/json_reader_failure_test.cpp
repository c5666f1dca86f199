// What the JSON reader says and leaves behind when something goes wrong.

#include <cstddef>

#include "plugin/json_fixture.h"

namespace vyn::test {
namespace {

using testing::HasSubstr;

class JsonReaderFailure : public JsonPlugin {
 protected:
  void expectReadFailure(const std::string& bytes) {
    const auto reader = m_plugin.reader(m_folder.add("bad.log", bytes));
    const std::string printed = printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); });
    EXPECT_EQ(printed, "<ms> [ ERROR ] Corrupted flatbuffer binary stream\n");
  }
};

const std::string kGoodChunk = "{messages:[{header:{sequenceNumber:1},appMetrics:{}}]}";

TEST_F(JsonReaderFailure, OfAMissingLogNamesIt) {
  const std::string path = m_folder.path("missing.log");
  const auto reader = m_plugin.reader(path);
  const std::string printed = printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); });
  EXPECT_EQ(printed, "<ms> [ ERROR ] Invalid or nonexistent file: " + path + "\n");
}

TEST_F(JsonReaderFailure, IsWhatAFolderGives) {
  const auto reader = m_plugin.reader(m_folder.path(""));
  printedBy([&] { EXPECT_FALSE(reader->readInputFile(false)); });
}

TEST_F(JsonReaderFailure, FollowsAChunkOfLengthZero) { expectReadFailure(framed("")); }

TEST_F(JsonReaderFailure, FollowsAChunkOfElevenBytes) {
  expectReadFailure(framed(std::string(11, '\0')));
}

TEST_F(JsonReaderFailure, FollowsAChunkThatIsNoBuffer) {
  expectReadFailure(framed(std::string(64, '\x7f')));
}

TEST_F(JsonReaderFailure, FollowsALengthOfFourGigabytesOnAShortFile) {
  expectReadFailure("\xff\xff\xff\xff" + chunkBytes(kGoodChunk));
}

TEST_F(JsonReaderFailure, FollowsALengthOfTwoGigabytesOnAShortFile) {
  expectReadFailure("\xff\xff\xff\x7f" + chunkBytes(kGoodChunk));
}

TEST_F(JsonReaderFailure, OfACutSecondChunkIsTheSameEveryTime) {
  const std::string whole = logOf({kGoodChunk, kGoodChunk});
  const std::size_t chunkSize = whole.size() / 2;
  // The second length is whole; its chunk is cut to nothing, to half and to all but one byte.
  for (const std::size_t kept : {std::size_t{4}, chunkSize / 2, chunkSize - 1}) {
    for (int attempt = 0; attempt < 10; ++attempt) {
      expectReadFailure(whole.substr(0, chunkSize + kept));
    }
  }
}

TEST_F(JsonReaderFailure, IsNotWhatPartOfALengthAtTheEndGives) {
  for (std::size_t rest = 1; rest <= 3; ++rest) {
    const auto reader = readLog(logOf({kGoodChunk}) + std::string(rest, '\x01'));
  }
}

// The chunk's only message, with the vtable entry of one of its fields cleared.
std::string withoutField(const std::string& json, std::size_t field) {
  std::string chunk = chunkBytes(json);
  const auto at = [&](std::size_t offset) {
    return static_cast<unsigned char>(chunk[offset]) | static_cast<unsigned char>(chunk[offset + 1])
                                                           << 8;
  };
  // The message's vtable is the one that reaches further than its third field: 4 + 2 * 3 bytes.
  for (std::size_t vtable = 4; vtable + 10 <= chunk.size(); vtable += 2) {
    if (at(vtable) == 10 && at(vtable + 4) != 0 && at(vtable + 8) != 0) {
      chunk[vtable + 4 + 2 * field] = '\0';
    }
  }
  return chunk;
}

TEST_F(JsonReaderFailure, MessageWithoutHeaderMakesItsChunkCorrupt) {
  expectReadFailure(framed(withoutField(kGoodChunk, 0)));
}

TEST_F(JsonReaderFailure, MessageWithoutMetricsMakesItsChunkCorrupt) {
  expectReadFailure(framed(withoutField(kGoodChunk, 2)));
}

TEST_F(JsonReaderFailure, OneMessageWithoutHeaderMakesTheSoundOnesCorruptToo) {
  // Sound ones have a vtable of their own, for their graph's name.
  const std::string sound = "{header:{},appMetrics:{},graphName:\"net\"}";
  const std::string chunk = "{messages:[" + sound + ",{header:{},appMetrics:{}}," + sound + "]}";
  readLog(logOf({chunk}));
  expectReadFailure(framed(withoutField(chunk, 0)));
  expectReadFailure(framed(withoutField(chunk, 2)));
}

TEST_F(JsonReaderFailure, UnalignedChunkIsReadLikeAnAlignedOne) {
  // Everything behind the root offset moved by one byte.
  const std::string json =
      "{header:{epochTime:5},messages:[{header:{timestamp:6},appMetrics:{stopMem:7},"
      "profilingEvents:[{identifier:\"a text of some "
      "length\",valueType:DOUBLE,doubleValue:0.25}]}]}";
  std::string chunk = chunkBytes(json);
  chunk.insert(4, 1, '\0');
  ++chunk[0];
  const auto reader = readLog(framed(chunk));
  const std::string document = output(*reader);
  for (const std::string part : {"\"epochTime\": 5", "\"timestamp\": 6", "\"stopMem\": 7",
                                 "\"identifier\": \"a text of some length\"", "\"value\": 0.25"}) {
    EXPECT_THAT(document, HasSubstr(part)) << part;
  }
}

TEST_F(JsonReaderFailure, OfAnOutputWithoutANameSaysSo) {
  const auto reader = readLog(logOf({kGoodChunk}));
  const std::string printed = printedBy([&] { EXPECT_FALSE(reader->generateOutput("")); });
  EXPECT_EQ(printed, "<ms> [ ERROR ] Output JSON file not provided.\n");
}

TEST_F(JsonReaderFailure, EmptyOutputNameIsSaidEvenWithoutARead) {
  const auto reader = m_plugin.reader("run.log");  // nothing has started logging yet
  const std::string printed = printedBy([&] { EXPECT_FALSE(reader->generateOutput("")); });
  EXPECT_EQ(printed, "<ms> [ ERROR ] Output JSON file not provided.\n");
}

TEST_F(JsonReaderFailure, OfAnOutputInAMissingFolderNamesIt) {
  const auto reader = readLog(logOf({kGoodChunk}));
  const std::string path = m_folder.path("missing/out.json");
  const std::string printed = printedBy([&] { EXPECT_FALSE(reader->generateOutput(path)); });
  EXPECT_EQ(printed, "<ms> [ ERROR ] Invalid output JSON file: [" + path + "]\n");
}

TEST_F(JsonReaderFailure, NumberThatIsNotOneStopsTheText) {
  for (const char* value : {"nan", "inf", "-inf"}) {
    const LoadedPlugin::Reader reader = readLog(logOfEventFields(
        "identifier:\"x\",valueType:DOUBLE,doubleValue:" + std::string(value) + ",subEvents:[]"));
    const std::string document = output(*reader);
    EXPECT_EQ(document.substr(document.size() - 10), "\"value\": \n") << value;
  }
}

TEST_F(JsonReaderFailure, TimeScaleThatIsNotANumberStopsTheText) {
  const std::string document = documentOf(logOf({"{header:{timeScale:nan}}"}));
  EXPECT_EQ(document.substr(document.size() - 14), "\"timeScale\": \n");
}

TEST_F(JsonReaderFailure, WriteErrorsAreNotNoticed) {
  const auto reader = readLog(logOf({kGoodChunk}));
  EXPECT_TRUE(reader->generateOutput("/dev/full"));
}

TEST_F(JsonReaderFailure, NullReaderIsIgnored) { m_plugin.deleteReader()(nullptr); }

}  // namespace
}  // namespace vyn::test
