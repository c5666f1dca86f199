// Entry points of libVynProfilingReader.

#include "core/start_logging.h"
#include "core/vyn_profile_log_reader.h"
#include "vyn/profiling/reader_plugin.h"

namespace vyn::profiling {

ProfileLogReader* createReader(const std::string& inputLogPath, VisibilityLevel level) {
  // The summary reader never starts logging itself; without this its errors would go unseen.
  startLogging();
  return new VynProfileLogReader(inputLogPath, level);
}

void deleteReader(ProfileLogReader* reader) { delete reader; }

}  // namespace vyn::profiling
