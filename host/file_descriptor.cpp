#include "file_descriptor.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <vector>

#include "host_error.h"

namespace vyn::host {
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
    throw HostError(file.name, explain(errno));
  }
  return static_cast<std::uint64_t>(status.st_size);
}

FileDescriptor duplicate(const NamedFile& file) {
  FileDescriptor copy(fcntl(file.descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
  if (!copy.isOpen()) {
    throw HostError(file.name, explain(errno));
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
  throw HostError(file.name, explain(error));
}

void writeAll(const NamedFile& file, const char* bytes, std::size_t size) {
  while (size > 0) {
    const std::size_t count = checked(write(file.descriptor, bytes, size), file);
    bytes += count;
    size -= count;
  }
}

void copyFile(const NamedFile& from, const NamedFile& to) {
  std::vector<char> block(kBlockSize);
  off_t offset = 0;
  ssize_t count = 0;
  while ((count = pread(from.descriptor, block.data(), block.size(), offset)) != 0) {
    const std::size_t size = checked(count, from);
    writeAll(to, block.data(), size);
    offset += static_cast<off_t>(size);
  }
}

}  // namespace vyn::host
