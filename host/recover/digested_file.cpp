#include "host/recover/digested_file.h"

#include <fcntl.h>

#include <utility>

#include "files/file_error.h"

namespace vyn::host {

DigestedFile::DigestedFile(files::NamedFile file) : m_file(std::move(file)) {}

void DigestedFile::write(std::string_view bytes) {
  constexpr std::uint64_t kPiece = std::uint64_t{16} << 20;  // bytes
  m_digest.add(bytes);
  files::writeAll(m_file, bytes);
  m_written += bytes.size();
  if (m_written - m_sent >= kPiece) {
    startWriteBack();
  }
}

// What is on its way to the disk while the rest is written and checked is not waited for in the
// end. Where the system cannot do that, it is.
void DigestedFile::startWriteBack() {
  const std::uint64_t count = m_written - m_sent;
  [[maybe_unused]] const int started =
      sync_file_range(m_file.descriptor, static_cast<off64_t>(m_sent), static_cast<off64_t>(count),
                      SYNC_FILE_RANGE_WRITE);
  m_sent = m_written;
}

void DigestedFile::check(const std::string& path, const std::string& name) const {
  const files::FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  ByteDigest found;
  if (file.isOpen()) {
    files::readFrom({file.get(), name}, 0, [&found](std::string_view bytes) { found.add(bytes); });
  }
  if (!file.isOpen() || found.value() != m_digest.value()) {
    throw files::FileError(name,
                           "does not hold what was written to it; check the disk and try again");
  }
}

}  // namespace vyn::host
