#include "host/input/log_reading.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <optional>
#include <stdexcept>

#include "cli/progress.h"
#include "files/file_error.h"
#include "host/report_line.h"

namespace vyn::host {
namespace {

// A file that is read in pieces, so that a long chunk does not keep the user waiting for a sign.
class WatchedFile : public profiling::ByteSource {
 public:
  WatchedFile(const LogFile& log, Progress progress) : m_file(log.path) {
    if (!m_file.isOpen()) {
      throw files::FileError(log.name, "cannot be opened: " + files::explain(errno));
    }
    if (progress == Progress::kShown) {
      m_progress.emplace(kProgramName, log.canBeReadAgain() ? log.status.st_size : 0);
    }
  }

  std::size_t read(std::uint8_t* to, std::size_t size) override {
    constexpr std::size_t kPiece = std::size_t{8} * 1024 * 1024;  // bytes
    std::size_t total = 0;
    while (total < size) {
      const std::size_t wanted = std::min(kPiece, size - total);
      const std::size_t count = m_file.read(to + total, wanted);
      total += count;
      m_done += count;
      if (m_progress) {
        m_progress->update(m_done);
      }
      if (count < wanted) {
        break;
      }
    }
    return total;
  }

  bool hasFailed() const override { return m_file.hasFailed(); }

 private:
  profiling::FileSource m_file;
  std::optional<cli::Progress> m_progress;
  std::uint64_t m_done = 0;  // bytes
};

}  // namespace

profiling::WalkResult walkLogFile(const LogFile& log, profiling::MessageSink& sink,
                                  Progress progress) {
  WatchedFile file(log, progress);
  try {
    const profiling::WalkResult walk = profiling::walkLog(file, sink);
    checkStillWhole(log);
    return walk;
  } catch (const std::bad_alloc&) {
    throw files::FileError(log.name, kNotEnoughMemory);
  } catch (const std::length_error&) {
    throw files::FileError(log.name, kNotEnoughMemory);
  }
}

}  // namespace vyn::host
