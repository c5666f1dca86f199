#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "input/salvage.h"

namespace vyn::host {

/// What is lost of a log, to be told when all of it was read.
class LossReport {
 public:
  void add(const profiling::LostRange& range);

  /// Nothing is to be told: the log is whole.
  bool isEmpty() const { return m_first.empty(); }

  /// Something of the log was not taken.
  bool hasLost() const { return m_ranges > 0; }

  /// A line on standard error for each lost range, but for no more than 20 of them; the rest is
  /// counted. `log` is the log's name.
  void print(const std::string& log) const;

  /// "2 ranges, 4000 bytes".
  std::string sum() const;

 private:
  std::vector<profiling::LostRange> m_first;
  std::uint64_t m_ranges = 0;
  std::uint64_t m_bytes = 0;
  std::uint64_t m_bytesOfFirst = 0;
};

}  // namespace vyn::host
