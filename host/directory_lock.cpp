#include "directory_lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

namespace vyn::host {

DirectoryLock::DirectoryLock(const std::filesystem::path& directory)
    : m_directory(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  while (flock(m_directory.get(), LOCK_EX) != 0 && errno == EINTR) {
  }
}

}  // namespace vyn::host
