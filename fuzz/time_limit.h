#pragma once

#include <cstddef>
#include <cstdint>
#include <ctime>

#include "check.h"

namespace vyn::fuzz {

/// Checks, at the end of its scope, that the process spent no more CPU time in it than an input of
/// that many bytes and tables may cost. Wide enough for the sanitizers and for texts that all
/// events share.
class TimeLimit {
 public:
  explicit TimeLimit(std::size_t inputSize, std::uint64_t tables = 0)
      : m_work(static_cast<double>(inputSize) + kBytesPerTable * static_cast<double>(tables)) {}
  ~TimeLimit() {
    const double seconds = static_cast<double>(std::clock() - m_start) / CLOCKS_PER_SEC;
    check(seconds <= kFixedSeconds + kSecondsPerByte * m_work,
          "the time is in proportion to the input");
  }
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;

 private:
  static constexpr double kFixedSeconds = 2;
  static constexpr double kSecondsPerByte = 500e-6;
  static constexpr double kBytesPerTable = 4;  // that an unshared one takes at least

  double m_work;  // in bytes
  std::clock_t m_start = std::clock();
};

}  // namespace vyn::fuzz
