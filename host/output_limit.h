#pragma once

#include <sys/resource.h>

#include <cstdint>
#include <memory>
#include <string>

#include "console_capture.h"
#include "log_file.h"

namespace vyn::host {

/// How many bytes an output may have: a log may name a text so often that its output is many
/// thousand times its own size.
class OutputLimit {
 public:
  static constexpr std::uint64_t kNone = UINT64_MAX;

  explicit OutputLimit(std::uint64_t bytes) : m_bytes(bytes) {}

  /// The larger of 1 GiB and 1,000 times the log.
  static OutputLimit standardFor(const LogFile& log);

  std::uint64_t bytes() const { return m_bytes; }

  /// Throws HostError when an output of that many bytes is too large; `target` is its name.
  void check(std::uint64_t size, const std::string& target) const;

 private:
  std::uint64_t m_bytes;
};

/// While it lives, no file can grow far beyond the limit, so that a reader that writes too much
/// stops, and what is printed to standard output is held back, lest it be cut where that is a long
/// file. A lower limit of the user's own (ulimit -f) stays as it is, and output then is not held
/// back.
class EnforcedLimit {
 public:
  /// The files that the reader adds to have `present` bytes already. Throws HostError.
  EnforcedLimit(const OutputLimit& limit, std::uint64_t present);
  /// Lifts the limit and passes on what was printed, unless it is too much.
  ~EnforcedLimit();
  EnforcedLimit(const EnforcedLimit&) = delete;
  EnforcedLimit& operator=(const EnforcedLimit&) = delete;

  /// The same, but throws HostError when too much was printed or it could not be passed on,
  /// ClosedPipe when nobody reads it.
  void lift();

 private:
  OutputLimit m_limit;
  rlimit m_previous{};
  std::unique_ptr<ConsoleCapture> m_console;  // none while the limit is not in force
};

}  // namespace vyn::host
