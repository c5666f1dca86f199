#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace vyn::test {

/// Bytes of a log that was damaged, each with the place where it stood before.
struct DamagedLog {
  static constexpr std::int64_t kNowhere = -1;  ///< of bytes that were changed or put in

  std::string bytes;
  std::vector<std::int64_t> origins;

  explicit DamagedLog(const std::string& log);

  /// True when the `size` bytes from `place` on stood in the log, in one piece, from `origin` on.
  bool holds(std::int64_t place, std::int64_t origin, std::int64_t size) const;
};

/// Damages the log at random places, one to three times: bytes flipped, zeroed or set at random,
/// blocks put in, removed or doubled, a chunk's length changed. `lengths` are the places of the
/// lengths. Returns what was done.
std::string damageAtRandom(DamagedLog& log, const std::vector<std::int64_t>& lengths,
                           std::mt19937& random);

}  // namespace vyn::test
