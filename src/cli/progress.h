#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace vyn::cli {

/// Tells on standard error how far the work is: only where that is a terminal, not in a CI job, and
/// only when the work takes longer than a second. The line is gone with the object.
class Progress {
 public:
  /// `program` stands in front of the line. `goal` is the size of the log that is read or made, in
  /// bytes; 0 when it is not known.
  Progress(std::string program, std::uint64_t goal);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// `size` is how much of the log is done, in bytes.
  void update(std::uint64_t size);

 private:
  using Clock = std::chrono::steady_clock;

  void show(std::uint64_t size);
  void clear();

  std::string m_program;
  std::uint64_t m_goal;
  bool m_isShown;
  Clock::time_point m_next;  ///< when to show something again
  std::size_t m_shown = 0;   ///< characters in the line
};

}  // namespace vyn::cli
