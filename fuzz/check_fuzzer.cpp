// Input: a log. What is found in it fits what the verifier says of its chunks.

#include "announced_size.h"
#include "check_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (!vyn::fuzz::announcesFarTooMuch({data, size})) {
    vyn::fuzz::checkFindings({data, size});
  }
  return 0;
}
