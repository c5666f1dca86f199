#pragma once

#include <cstddef>
#include <ctime>

#include "check.h"

namespace vyn::fuzz {

/// Checks, at the end of its scope, that the process spent no more CPU time in it than an input of
/// that size may cost. Wide enough for the sanitizers and for texts that all events share.
class TimeLimit {
 public:
  explicit TimeLimit(std::size_t inputSize) : m_inputSize(inputSize) {}
  ~TimeLimit() {
    const double seconds = static_cast<double>(std::clock() - m_start) / CLOCKS_PER_SEC;
    check(seconds <= kFixedSeconds + kSecondsPerByte * static_cast<double>(m_inputSize),
          "the time is in proportion to the input");
  }
  TimeLimit(const TimeLimit&) = delete;
  TimeLimit& operator=(const TimeLimit&) = delete;

 private:
  static constexpr double kFixedSeconds = 2;
  static constexpr double kSecondsPerByte = 500e-6;

  std::size_t m_inputSize;
  std::clock_t m_start = std::clock();
};

}  // namespace vyn::fuzz
