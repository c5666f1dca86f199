// Input: one chunk, which the mutator keeps sound while it changes what the chunk says. Both
// readers read it alike and see the same messages.

#include <algorithm>
#include <vector>

#include "both_readers.h"
#include "input/chunk_format.h"
#include "input/chunk_verifier.h"
#include "input_file.h"
#include "log_mutator.h"

namespace {

std::vector<std::uint8_t> framed(const std::uint8_t* data, std::size_t size) {
  const auto length = vyn::profiling::lengthBytes(static_cast<vyn::profiling::ChunkLength>(size));
  std::vector<std::uint8_t> log(length.begin(), length.end());
  log.insert(log.end(), data, data + size);
  return log;
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned seed) {
  if (!vyn::profiling::ChunkVerifier().isSound({data, size})) {
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
  const std::vector<std::uint8_t> bytes = framed(data, size);
  const vyn::fuzz::InputFile log(bytes.data(), bytes.size());
  vyn::fuzz::readWithBoth(log.path());
  return 0;
}
