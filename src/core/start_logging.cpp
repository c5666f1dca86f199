#include "core/start_logging.h"

#include <ostream>

#include "core/process_state.h"
#include "log/logger_registry.h"

namespace vyn::profiling {

bool startLogging(std::int32_t maxLevel) {
  if (log::initializeLogging(nullptr, maxLevel)) {
    return true;
  }
  standardError() << "ERROR: Unable to initialize logging" << std::endl;
  return false;
}

}  // namespace vyn::profiling
