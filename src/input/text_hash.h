#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vyn::profiling {

/// Hash for look-ups by the texts of a log. It is seeded anew for each process: against a hash that
/// is known beforehand, a log can be made whose texts all collide, and each look-up would then walk
/// through all of them.
class TextHash {
 public:
  using is_transparent = void;  // look up std::string keys by std::string_view

  std::size_t operator()(std::string_view text) const;

 private:
  std::uint64_t m_seed = processSeed();

  static std::uint64_t processSeed();
};

}  // namespace vyn::profiling
