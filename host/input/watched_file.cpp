#include "host/input/watched_file.h"

#include <algorithm>
#include <cerrno>

#include "files/file_error.h"
#include "host/report_line.h"

namespace vyn::host {

WatchedFile::WatchedFile(const LogFile& log, Progress progress) : m_file(log.path) {
  if (!m_file.isOpen()) {
    throw files::FileError(log.name, "cannot be opened: " + files::explain(errno));
  }
  if (progress == Progress::kShown) {
    m_progress.emplace(kProgramName, log.canBeReadAgain() ? log.status.st_size : 0);
  }
}

std::size_t WatchedFile::read(std::uint8_t* to, std::size_t size) {
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

void WatchedFile::seek(std::uint64_t offset) {
  m_file.seek(offset);
  m_done = offset;
}

}  // namespace vyn::host
