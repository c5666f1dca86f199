#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace vyn::logmaker {

/// Tells on standard error how much of the log there is: only where that is a terminal, and only
/// when the work takes longer than a moment. The line is gone with the object.
class Progress {
 public:
  /// `goal` is the log's size in the end, in bytes; 0 when it is not known.
  explicit Progress(std::uint64_t goal);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// `size` is that of the log so far, in bytes.
  void update(std::uint64_t size);

 private:
  using Clock = std::chrono::steady_clock;

  void show(std::uint64_t size);
  void clear();

  std::uint64_t m_goal;
  bool m_isTerminal;
  Clock::time_point m_next;  ///< when to show something again
  std::size_t m_shown = 0;   ///< characters in the line
};

}  // namespace vyn::logmaker
