#pragma once

#include <cstdint>
#include <string>

namespace vyn::profiling {

/// "1 chunk", "2 chunks".
inline std::string counted(std::uint64_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace vyn::profiling
