// Input: a log file. Whatever the summary reader reads without error it can print, list and
// write the payloads of, twice alike.

#include <cstring>

#include "check.h"
#include "input/chunk_format.h"
#include "input_file.h"
#include "summary_run.h"
#include "table_total.h"

namespace {

using vyn::profiling::ChunkLength;

// Reserving a chunk far longer than the file costs nothing but, under the address sanitizer, a
// tenth of a second each time.
constexpr std::size_t kMaxMissing = std::size_t{1024} * 1024;  // bytes

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
  const vyn::fuzz::InputFile log(data, size);
  // Texts that far more events share than the input has bytes are copied that often: the memory
  // runs out, as it may.
  if (vyn::fuzz::tablesOf(log.path()) > size) {
    return 0;
  }
  const vyn::fuzz::SummaryRun run(log.path());
  // The first reader still has its memory, so that this one's lies elsewhere.
  const vyn::fuzz::SummaryRun again(log.path());
  vyn::fuzz::check(again.outputs() == run.outputs(), "the same comes out again");
  return 0;
}
