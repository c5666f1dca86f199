// A reader library that forgot the second of its exports.

#include "vyn/profiling/reader_plugin.h"

namespace vyn::profiling {

ProfileLogReader* createReader(const std::string& /*inputLogPath*/, VisibilityLevel /*level*/) {
  return nullptr;
}

}  // namespace vyn::profiling
