#include "core/start_logging.h"

#include <ostream>

#include "core/process_state.h"
#include "log/logger_registry.h"

namespace vyn::profiling {

bool startLogging() {
  if (log::initializeLogging(nullptr, static_cast<std::int32_t>(log::kError))) {
    return true;
  }
  standardError() << "ERROR: Unable to initialize logging" << std::endl;
  return false;
}

}  // namespace vyn::profiling
