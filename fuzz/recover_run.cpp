#include "recover_run.h"

#include <vector>

#include "analysis/log_check.h"
#include "check.h"
#include "input/salvage.h"
#include "time_limit.h"

namespace vyn::fuzz {
namespace {

using namespace vyn::profiling;
using Bytes = std::vector<std::uint8_t>;

// Puts the chunks that it is handed together to a log.
class Copy : public MessageSink {
 public:
  void chunk(const Chunk& chunk, const ChunkPlace& place) override {
    check(place.present == place.announced, "chunks are whole");
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

Salvaged salvage(std::span<const std::uint8_t> log, bool search) {
  Salvaged salvaged;
  MemorySource source(log);
  const LossSink lose = [&salvaged](const LostRange& range) {
    check(range.from < range.to, "a lost range has bytes");
    salvaged.lostBytes += range.to - range.from;
  };
  const WalkEnd end = salvageLog(source, salvaged.copy, lose, {search, true});
  check(end == WalkEnd::kEndOfLog, "memory can be read");
  check(salvaged.copy.bytes().size() + salvaged.lostBytes == log.size(),
        "each byte is saved or lost");
  return salvaged;
}

// Nothing that was saved is damaged, whatever the log.
void checkSaved(const Bytes& saved) {
  MemorySource source(saved);
  LogCheck findings;
  const WalkResult walk = walkLog(source, findings);
  check(findings.finish(walk).count(Severity::kError) == 0, "what is saved has no errors");
}

void checkSalvage(std::span<const std::uint8_t> log, bool search) {
  const Salvaged first = salvage(log, search);
  const Bytes& saved = first.copy.bytes();
  checkSaved(saved);
  MemorySource source(saved);
  Copy again;
  const WalkResult walk = walkLog(source, again);
  check(walk.end == WalkEnd::kEndOfLog && again.bytes() == saved &&
            again.messages() == first.copy.messages(),
        "what is saved is a log without damage");
  const Salvaged second = salvage(saved, search);
  check(second.lostBytes == 0 && second.copy.bytes() == saved, "nothing is lost of what was saved");
}

}  // namespace

void checkSalvage(std::span<const std::uint8_t> log) {
  const TimeLimit limit(log.size());
  checkSalvage(log, false);
  checkSalvage(log, true);
}

}  // namespace vyn::fuzz
