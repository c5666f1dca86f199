#pragma once

#include <cstdint>
#include <random>

namespace vyn::logmaker {

/// Seeded variation, the same on every machine: the standard fixes the engine's numbers but not
/// those of its distributions.
class Noise {
 public:
  explicit Noise(std::uint64_t seed) : m_engine(seed) {}

  std::uint64_t next() { return m_engine(); }

  /// From low to high, both included.
  std::uint64_t between(std::uint64_t low, std::uint64_t high) {
    return low + m_engine() % (high - low + 1);
  }

  /// The value, up to so many percent smaller or larger.
  std::uint64_t vary(std::uint64_t value, std::uint64_t percent) {
    const std::uint64_t span = value * percent / 100;
    return between(value - span, value + span);
  }

 private:
  std::mt19937_64 m_engine;
};

}  // namespace vyn::logmaker
