#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>

#include "report/event_text.h"

namespace vyn::profiling {

// Lines that several blocks of the console summary share. Durations are in microseconds.

inline std::string indent() { return std::string(kIndentWidth, ' '); }

inline void printTimeLine(std::ostream& stream, std::uint64_t duration) {
  stream << indent() << "NetRun: " << duration << " us" << std::endl;
}

inline void printGraphHeading(std::ostream& stream, std::size_t index, std::string_view name) {
  stream << "Graph " << index << " (" << name << "):" << std::endl;
}

}  // namespace vyn::profiling
