#pragma once

#include <profile_log_generated.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "analysis/log_facts.h"
#include "base/text_hash.h"

namespace vyn::profiling {

/// Keeps the first header of a log and compares later ones with it.
class HeaderCollector {
 public:
  void add(const schema::LogHeader& header);

  /// Fills in the headers.
  void report(LogFacts& facts) const;

 private:
  /// Every field of a header; of texts, which may be long, the hashes. A chunk has one header, so
  /// that to look at all of its texts takes no more than to read it.
  struct Identity {
    std::array<std::uint64_t, 3> numbers;  // the time scale's bits, the epoch time, the time stamp
    std::optional<std::array<std::uint32_t, 4>> version;
    std::array<std::optional<std::uint64_t>, 2> texts;
  };

  Identity identityOf(const schema::LogHeader& header) const;
  void noteDifferences(const Identity& other);

  TextHash m_hash;
  std::optional<HeaderFacts> m_first;
  Identity m_identity{};
  std::uint64_t m_count = 0;
  std::array<bool, 6> m_differs{};  // by the field, in the order of the schema
};

}  // namespace vyn::profiling
