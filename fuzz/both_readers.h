#pragma once

#include <cstddef>
#include <string>

namespace vyn::fuzz {

/// What both readers say of a log.
struct Verdict {
  bool isSound;
  std::size_t messageCount;  // of a sound log
};

/// Reads the log with either reader and writes what they read. Aborts when they disagree, when
/// either says something else the second time, when what was read cannot be written, or when the
/// document is out of proportion to the log. Leaves nothing in the process-wide document.
Verdict readWithBoth(const std::string& logPath);

}  // namespace vyn::fuzz
