// Input: a log file. Whatever the base reader reads without error it can print, list and
// write the payloads of, twice alike.

#include <cstring>

#include "base_run.h"
#include "check.h"
#include "input/chunk_format.h"
#include "log_file.h"

namespace {

using vyn::profiling::ChunkLength;

// Reserving a chunk far longer than the file costs nothing but, under the address sanitizer, a
// tenth of a second each time.
constexpr std::size_t kMaxMissing = 1024 * 1024;  // bytes

bool announcesFarTooMuch(const std::uint8_t* data, std::size_t size) {
  ChunkLength length = 0;
  for (std::size_t offset = 0; size - offset >= sizeof(length); offset += length) {
    std::memcpy(&length, data + offset, sizeof(length));
    offset += sizeof(length);
    if (length > size - offset) {
      return length - (size - offset) > kMaxMissing;
    }
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (announcesFarTooMuch(data, size)) {
    return 0;
  }
  const vyn::fuzz::LogFile log(data, size);
  const vyn::fuzz::BaseRun run(log.path());
  // The first reader still has its memory, so that this one's lies elsewhere.
  const vyn::fuzz::BaseRun again(log.path());
  vyn::fuzz::check(again.outputs() == run.outputs(), "the same comes out again");
  return 0;
}
