#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "core/vyn_profile_log_reader.h"

namespace vyn::fuzz {

/// What one run of the summary reader gave, each output as its hash.
struct SummaryOutputs {
  bool isSound = false;
  std::uint64_t console = 0;
  std::uint64_t listing = 0;   // the CSV file
  std::uint64_t payloads = 0;  // the files' names and bytes

  bool operator==(const SummaryOutputs&) const = default;
};

/// Reads a log with the summary reader and lets it write everything that it can write. Aborts when
/// what was read cannot be written, or when that takes time out of proportion. Payloads are written
/// into a folder that is gone afterwards; not at all when the log has a byte that may lead out of
/// it. The reader and its memory live as long as this.
class SummaryRun {
 public:
  explicit SummaryRun(const std::string& logPath);

  const SummaryOutputs& outputs() const { return m_outputs; }

  /// Messages that were read, taken or not.
  std::size_t messageCount() const { return m_reader.count(); }

 private:
  class CountingReader : public profiling::VynProfileLogReader {
   public:
    using VynProfileLogReader::VynProfileLogReader;
    bool processNextMessage() override;
    std::size_t count() const { return m_count; }

   private:
    std::size_t m_count = 0;
  };

  CountingReader m_reader;
  SummaryOutputs m_outputs;
};

}  // namespace vyn::fuzz
