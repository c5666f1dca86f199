// Entry points of libVynJsonProfilingReader.

#include "core/vyn_profile_log_reader_json.h"
#include "vyn/profiling/reader_plugin.h"

namespace vyn::profiling {

ProfileLogReader* createReader(const std::string& inputLogPath, VisibilityLevel level) {
  return new VynProfileLogReaderJSON(inputLogPath, level);
}

void deleteReader(ProfileLogReader* reader) { delete reader; }

}  // namespace vyn::profiling
