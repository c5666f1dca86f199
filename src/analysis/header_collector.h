#pragma once

#include <profile_log_generated.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "analysis/log_facts.h"
#include "input/text_fingerprints.h"

namespace vyn::profiling {

/// Keeps the first header of a log and compares later ones with it.
class HeaderCollector {
 public:
  /// The texts of the header belong to the chunk that `fingerprints` knows.
  void add(const schema::LogHeader& header, TextFingerprints& fingerprints);

  /// Fills in the headers.
  void report(LogFacts& facts) const;

 private:
  /// Every field of a header, in a form that compares whole texts however long they are.
  struct Identity {
    std::array<std::uint64_t, 3> numbers;  // the time scale's bits, the epoch time, the time stamp
    std::optional<std::array<std::uint32_t, 4>> version;
    std::array<std::optional<TextFingerprint>, 2> texts;
  };

  static Identity identityOf(const schema::LogHeader& header, TextFingerprints& fingerprints);
  void noteDifferences(const Identity& other);

  std::optional<HeaderFacts> m_first;
  Identity m_identity{};
  std::uint64_t m_count = 0;
  std::array<bool, 6> m_differs{};  // by the field, in the order of the schema
};

}  // namespace vyn::profiling
