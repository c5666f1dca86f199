#include "core/vyn_profile_log_reader.h"

namespace vyn::profiling {

// The header's numbers stay unset: nobody reads them before m_headerSaved is true.
VynProfileLogReader::VynProfileLogReader(const std::string& inputLogPath, VisibilityLevel level)
    : m_visibilityLevel(level), m_inputLogFileLocation(inputLogPath) {}

VynProfileLogReader::~VynProfileLogReader() = default;

int VynProfileLogReader::isReaderValid() { return 1; }

}  // namespace vyn::profiling
