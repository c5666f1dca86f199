// Input: a log. What is salvaged of it is a log without damage.

#include "recover_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vyn::fuzz::checkSalvage({data, size});
  return 0;
}
