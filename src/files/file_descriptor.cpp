#include "files/file_descriptor.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <vector>

#include "files/file_error.h"

namespace vyn::files {
namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 18;  // bytes

std::size_t checked(ssize_t count, const NamedFile& file) {
  if (count >= 0) {
    return static_cast<std::size_t>(count);
  }
  if (errno == EINTR) {
    return 0;
  }
  throwFailure(file, errno);
}

}  // namespace

int FileDescriptor::close() {
  if (!isOpen()) {
    return 0;
  }
  return ::close(std::exchange(m_descriptor, kNone)) == 0 ? 0 : errno;
}

bool isSameFile(const struct stat& left, const struct stat& right) {
  return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

std::uint64_t sizeOf(const NamedFile& file) {
  struct stat status {};
  if (fstat(file.descriptor, &status) != 0) {
    throw FileError(file.name, explain(errno));
  }
  return static_cast<std::uint64_t>(status.st_size);
}

std::string tailOf(const NamedFile& file, std::size_t size) {
  const std::uint64_t whole = sizeOf(file);
  std::string tail(std::min<std::uint64_t>(whole, size), '\0');
  const auto start = static_cast<off_t>(whole - tail.size());
  const ssize_t count = pread(file.descriptor, tail.data(), tail.size(), start);
  if (count < 0) {
    throw FileError(file.name, explain(errno));
  }
  tail.resize(static_cast<std::size_t>(count));
  return tail;
}

FileDescriptor duplicate(const NamedFile& file) {
  FileDescriptor copy(fcntl(file.descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
  if (!copy.isOpen()) {
    throw FileError(file.name, explain(errno));
  }
  return copy;
}

bool isClosedPipe(int descriptor) {
  struct stat status {};
  pollfd polled{descriptor, 0, 0};
  return fstat(descriptor, &status) == 0 &&
         (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode)) && poll(&polled, 1, 0) == 1 &&
         (polled.revents & (POLLERR | POLLHUP)) != 0;
}

void throwFailure(const NamedFile& file, int error) {
  if (isClosedPipe(file.descriptor)) {
    throw ClosedPipe(file.name, explain(EPIPE));
  }
  throw FileError(file.name, explain(error));
}

void writeAll(const NamedFile& file, std::string_view bytes) {
  while (!bytes.empty()) {
    bytes.remove_prefix(checked(write(file.descriptor, bytes.data(), bytes.size()), file));
  }
}

void readFrom(const NamedFile& file, std::uint64_t offset,
              const std::function<void(std::string_view)>& take) {
  std::vector<char> block(kBlockSize);
  ssize_t count = 0;
  while ((count = pread(file.descriptor, block.data(), block.size(), static_cast<off_t>(offset))) !=
         0) {
    const std::size_t size = checked(count, file);
    take({block.data(), size});
    offset += size;
  }
}

}  // namespace vyn::files
