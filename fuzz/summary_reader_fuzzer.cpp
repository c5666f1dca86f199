// Input: a log file. Whatever the summary reader reads without error it can print, list and
// write the payloads of, twice alike.

#include "announced_size.h"
#include "check.h"
#include "input_file.h"
#include "summary_run.h"
#include "table_total.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (vyn::fuzz::announcesFarTooMuch({data, size})) {
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
