#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/check_codes.h"

namespace vyn::profiling {

/// What was found, and what stands there in a sound log: clauses. They may hold texts of the log,
/// of which no more than a few words; printers must make them safe.
struct Evidence {
  std::string found;
  std::string expected;
};

/// One thing that is wrong with a log.
struct Finding {
  CheckCode code = CheckCode::kUnexplained;
  std::uint64_t chunk = 0;    ///< of the log, from 1 on; 0 for the log as a whole
  std::uint64_t message = 0;  ///< of the log, from 1 on; 0 for none
  std::uint64_t offset = 0;   ///< bytes of the log in front of it
  Evidence evidence;
};

/// What is wrong with a log, and how much of it is sound.
class Findings {
 public:
  /// How many findings of one code are kept.
  static constexpr std::uint64_t kMaxKept = 20;

  /// Counts a finding; `make` is asked for it only when it is kept.
  template <typename Make>
  void add(CheckCode code, const Make& make) {
    if (++m_counts.at(static_cast<std::size_t>(code)) <= kMaxKept) {
      m_kept.push_back(make());
    }
  }

  /// The findings that were kept, in the order of the log.
  const std::vector<Finding>& kept() const { return m_kept; }

  /// How many findings there are of the code, with those that were not kept.
  std::uint64_t count(CheckCode code) const { return m_counts.at(static_cast<std::size_t>(code)); }

  /// How many there are of the severity.
  std::uint64_t count(Severity severity) const {
    std::uint64_t total = 0;
    for (std::size_t code = 0; code < kCheckCodeCount; ++code) {
      total += kCheckCodes.at(code).severity == severity ? m_counts.at(code) : 0;
    }
    return total;
  }

  std::uint64_t chunks = 0;      ///< that are sound
  std::uint64_t messages = 0;    ///< of these
  std::uint64_t soundBytes = 0;  ///< of the log, up to its first damage

 private:
  std::vector<Finding> m_kept;
  std::array<std::uint64_t, kCheckCodeCount> m_counts{};
};

}  // namespace vyn::profiling
