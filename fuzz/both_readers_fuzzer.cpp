// Input: one chunk, which the mutator keeps sound while it changes what the chunk says. Both
// readers read it alike and see the same messages.

#include <algorithm>
#include <vector>

#include "check.h"
#include "core/vyn_profile_log_reader.h"
#include "input/chunk_verifier.h"
#include "json/json_document.h"
#include "json/vyn_profile_log_reader_json.h"
#include "log_file.h"
#include "log_mutator.h"
#include "quiet_streams.h"

namespace {

using vyn::fuzz::check;
using vyn::profiling::g_jsonDocument;

constexpr vyn::profiling::VisibilityLevel kHighestLevel{127};

class CountingReader : public vyn::profiling::VynProfileLogReader {
 public:
  using VynProfileLogReader::VynProfileLogReader;

  bool processNextMessage() override {
    const bool taken = VynProfileLogReader::processNextMessage();
    m_count += m_reachedEof ? 0 : 1;
    return taken;
  }

  std::size_t count() const { return m_count; }

 private:
  std::size_t m_count = 0;
};

std::vector<std::uint8_t> framed(const std::uint8_t* data, std::size_t size) {
  const auto length = static_cast<vyn::profiling::ChunkLength>(size);
  const auto* lengthBytes = reinterpret_cast<const std::uint8_t*>(&length);
  std::vector<std::uint8_t> log(lengthBytes, lengthBytes + sizeof(length));
  log.insert(log.end(), data, data + size);
  return log;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed) {
  if (!vyn::profiling::isSoundChunk(data, size)) {
    // The smallest sound chunk: an empty table.
    constexpr std::uint8_t kEmptyLog[] = {8, 0, 0, 0, 4, 0, 4, 0, 4, 0, 0, 0};
    if (maxSize < sizeof(kEmptyLog)) {
      return 0;
    }
    std::copy(std::begin(kEmptyLog), std::end(kEmptyLog), data);
  }
  return vyn::fuzz::mutateChunk(data, maxSize, seed);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const vyn::fuzz::QuietOutput quiet;
  const std::vector<std::uint8_t> bytes = framed(data, size);
  const vyn::fuzz::LogFile log(bytes.data(), bytes.size());
  CountingReader base(log.path(), kHighestLevel);
  vyn::profiling::VynProfileLogReaderJSON json(log.path(), kHighestLevel);
  const bool baseRead = base.readInputFile(false);
  check(json.readInputFile(false) == baseRead, "both readers judge the log alike");
  if (baseRead) {
    const auto& document = *(g_jsonDocument.End() - 1);
    check(document["messages"].Size() == base.count(), "both readers see the same messages");
    check(base.generateOutput("/dev/null"), "what was read can be written");
  }
  g_jsonDocument.SetArray();
  g_jsonDocument.GetAllocator().Clear();
  return 0;
}
