#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cli/progress.h"
#include "host/input/log_file.h"
#include "input/byte_source.h"

namespace vyn::host {

/// Whether a user who waits is told how far the work is.
enum class Progress { kShown, kHidden };

/// A log that is read in pieces, so that a long chunk does not keep the user waiting for a sign.
class WatchedFile : public profiling::SeekableSource {
 public:
  /// Throws FileError when the log cannot be opened.
  WatchedFile(const LogFile& log, Progress progress);

  std::size_t read(std::uint8_t* to, std::size_t size) override;
  bool hasFailed() const override { return m_file.hasFailed(); }
  std::optional<std::uint64_t> size() const override { return m_file.size(); }
  void seek(std::uint64_t offset) override;

 private:
  profiling::FileSource m_file;
  std::optional<cli::Progress> m_progress;
  std::uint64_t m_done = 0;  // bytes
};

}  // namespace vyn::host
