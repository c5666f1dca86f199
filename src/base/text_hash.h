#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vyn::profiling {

/// The 16 random bytes that the kernel hands to each process.
std::array<std::uint64_t, 2> processSeeds();

/// Hash for look-ups by the texts of a log. It is seeded anew for each process: against a hash that
/// is known beforehand, a log can be made whose texts all collide, and each look-up would then walk
/// through all of them.
class TextHash {
 public:
  using is_transparent = void;  // look up std::string keys by std::string_view

  std::size_t operator()(std::string_view text) const;

 private:
  std::uint64_t m_seed = processSeeds()[0];
};

}  // namespace vyn::profiling
