// Input: a log file. Whatever the base reader reads without error it can print and list.

#include "check.h"
#include "core/vyn_profile_log_reader.h"
#include "log_file.h"
#include "quiet_streams.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const vyn::fuzz::QuietOutput quiet;
  const vyn::fuzz::LogFile log(data, size);
  vyn::profiling::VynProfileLogReader reader(log.path(), vyn::profiling::VisibilityLevel{127});
  if (reader.readInputFile(false)) {
    vyn::fuzz::check(reader.generateOutput("/dev/null"), "what was read can be written");
  }
  return 0;
}
