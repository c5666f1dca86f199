#pragma once

#include <sys/resource.h>

#include <cstdint>
#include <string>

#include "host/input/log_file.h"

namespace vyn::host {

/// How many bytes an output may have: a log may name a text so often that its output is many
/// thousand times its own size.
class OutputLimit {
 public:
  static constexpr std::uint64_t kNone = UINT64_MAX;

  /// What the user allows.
  explicit OutputLimit(std::uint64_t bytes) : OutputLimit(bytes, "") {}

  /// The larger of 1 GiB and 1,000 times the log.
  static OutputLimit standardFor(const LogFile& log);

  std::uint64_t bytes() const { return m_bytes; }

  /// Throws FileError when an output of that many bytes is too large; `target` is its name.
  void check(std::uint64_t size, const std::string& target) const;

 private:
  OutputLimit(std::uint64_t bytes, const char* meaning) : m_bytes(bytes), m_meaning(meaning) {}

  std::uint64_t m_bytes;
  const char* m_meaning;  // what to say of an output that is larger
};

/// While it lives, no file can grow far beyond the limit, so that a reader that writes too much
/// stops. A lower limit of the user's own (ulimit -f) stays as it is.
class EnforcedLimit {
 public:
  /// The files that the reader adds to have `present` bytes already.
  EnforcedLimit(const OutputLimit& limit, std::uint64_t present);
  ~EnforcedLimit();
  EnforcedLimit(const EnforcedLimit&) = delete;
  EnforcedLimit& operator=(const EnforcedLimit&) = delete;

 private:
  rlimit m_previous{};
};

}  // namespace vyn::host
