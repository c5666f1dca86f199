// Input: a log. What is salvaged of it, searched or not, is a log without damage; of that nothing
// is lost when it is salvaged again.

#include <vector>

#include "check.h"
#include "input/salvage.h"
#include "time_limit.h"

namespace {

using namespace vyn::profiling;
using Bytes = std::vector<std::uint8_t>;

// Puts the chunks that it is handed together to a log.
class Copy : public MessageSink {
 public:
  void chunk(const Chunk& chunk, const ChunkPlace& place) override {
    vyn::fuzz::check(place.present == place.announced, "chunks are whole");
    const auto length = lengthBytes(place.announced);
    m_bytes.insert(m_bytes.end(), length.begin(), length.end());
    m_bytes.insert(m_bytes.end(), chunk.data(), chunk.data() + chunk.size);
  }
  void message(const schema::Message& /*message*/) override { ++m_messages; }

  const Bytes& bytes() const { return m_bytes; }
  std::uint64_t messages() const { return m_messages; }

 private:
  Bytes m_bytes;
  std::uint64_t m_messages = 0;
};

struct Salvaged {
  Copy copy;
  std::uint64_t lostBytes = 0;
};

Salvaged salvage(const Bytes& log, bool search) {
  Salvaged salvaged;
  MemorySource source(log);
  const LossSink lose = [&salvaged](const LostRange& range) {
    vyn::fuzz::check(range.from < range.to, "a lost range has bytes");
    salvaged.lostBytes += range.to - range.from;
  };
  const WalkEnd end = salvageLog(source, salvaged.copy, lose, {search, true});
  vyn::fuzz::check(end == WalkEnd::kEndOfLog, "memory can be read");
  vyn::fuzz::check(salvaged.copy.bytes().size() + salvaged.lostBytes == log.size(),
                   "each byte is saved or lost");
  return salvaged;
}

void checkSalvage(const Bytes& log, bool search) {
  const Salvaged first = salvage(log, search);
  const Bytes& saved = first.copy.bytes();
  MemorySource source(saved);
  Copy again;
  const WalkResult walk = walkLog(source, again);
  vyn::fuzz::check(walk.end == WalkEnd::kEndOfLog && again.bytes() == saved &&
                       again.messages() == first.copy.messages(),
                   "what is saved is a log without damage");
  const Salvaged second = salvage(saved, search);
  vyn::fuzz::check(second.lostBytes == 0 && second.copy.bytes() == saved,
                   "nothing is lost of what was saved");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Bytes log(data, data + size);
  const vyn::fuzz::TimeLimit limit(size);
  checkSalvage(log, false);
  checkSalvage(log, true);
  return 0;
}
