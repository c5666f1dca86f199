#include "json/vyn_profile_log_reader_json.h"

namespace vyn::profiling {

VynProfileLogReaderJSON::VynProfileLogReaderJSON(const std::string& inputLogPath,
                                                 VisibilityLevel level)
    : VynProfileLogReader(inputLogPath, level) {}

VynProfileLogReaderJSON::~VynProfileLogReaderJSON() = default;

}  // namespace vyn::profiling
