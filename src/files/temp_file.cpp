#include "files/temp_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "files/file_error.h"

namespace vyn::files {
namespace {

constexpr std::size_t kMaxNamePart = 240;  // bytes of the name; leaves room within 255 for the rest

constexpr mode_t kPermissions = 0777;
constexpr mode_t kNewFileMode = 0666;  // less what the user's umask takes away

mode_t newFileMode() {
  const mode_t mask = umask(0);
  umask(mask);
  return kNewFileMode & ~mask;
}

// The user may be another one than the owner of the file at `target`; then the owner changes, as
// with a new file.
void adoptMode(const NamedFile& file, const std::filesystem::path& target) {
  mode_t mode = newFileMode();
  struct stat found {};
  if (stat(target.c_str(), &found) == 0) {
    mode = found.st_mode & kPermissions;
    [[maybe_unused]] const int kept = fchown(file.descriptor, found.st_uid, found.st_gid);
  }
  if (fchmod(file.descriptor, mode) != 0) {
    throw FileError(file.name, explain(errno));
  }
}

// Returns 0 or the error number. A file system that cannot refuse in one step (EINVAL) replaces.
int rename(const std::string& path, const std::string& target, TempFile::Existing existing) {
  if (existing == TempFile::Existing::kRefused) {
    if (renameat2(AT_FDCWD, path.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) {
      return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
      return errno;
    }
  }
  return std::rename(path.c_str(), target.c_str()) == 0 ? 0 : errno;
}

// The new name survives a power failure only when its directory reached the disk too. Not every
// file system can do that, and the output is in place already: a failure is none of the user's.
void syncDirectory(const std::filesystem::path& directory) {
  const FileDescriptor opened(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  [[maybe_unused]] const int synced = fsync(opened.get());
}

}  // namespace

TempFile::TempFile(const std::filesystem::path& directory, const std::string& name,
                   std::string subject)
    : m_subject(std::move(subject)),
      m_path(directory / ("." + name.substr(0, kMaxNamePart) + ".XXXXXX")) {
  const SignalDelay delay;
  m_descriptor = FileDescriptor(mkostemp(m_path.data(), O_CLOEXEC));
  if (!m_descriptor.isOpen()) {
    throw FileError(m_subject, errno == ENOENT
                                   ? "its directory does not exist; make it or choose another"
                                   : explain(errno));
  }
  m_removal.emplace(m_path);
}

TempFile::~TempFile() {
  if (!m_path.empty()) {
    unlink(m_path.c_str());
  }
}

void TempFile::finish(const std::filesystem::path& target) {
  adoptMode(file(), target);
  if (fsync(m_descriptor.get()) != 0) {
    throw FileError(m_subject, explain(errno));
  }
  if (const int error = m_descriptor.close(); error != 0) {
    throw FileError(m_subject, explain(error));
  }
}

void TempFile::moveTo(const std::filesystem::path& target, Existing existing) {
  const SignalDelay delay;
  if (const int error = rename(m_path, target, existing); error != 0) {
    throw FileError(m_subject, explain(error));
  }
  m_path.clear();
  m_removal.reset();
  syncDirectory(directoryOf(target));
}

std::filesystem::path directoryOf(const std::filesystem::path& file) {
  return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

}  // namespace vyn::files
