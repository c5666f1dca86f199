#include "file_descriptor.h"

#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <vector>

#include "host_error.h"

namespace vyn::host {
namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 18;  // bytes

std::size_t checked(ssize_t count, const std::string& name) {
  if (count >= 0) {
    return static_cast<std::size_t>(count);
  }
  if (errno == EINTR) {
    return 0;
  }
  throw HostError(name, explain(errno));
}

void writeAll(const NamedFile& file, const char* bytes, std::size_t size) {
  while (size > 0) {
    const std::size_t count = checked(write(file.descriptor, bytes, size), file.name);
    bytes += count;
    size -= count;
  }
}

}  // namespace

int FileDescriptor::close() {
  if (!isOpen()) {
    return 0;
  }
  return ::close(std::exchange(m_descriptor, kNone)) == 0 ? 0 : errno;
}

void copyFile(const NamedFile& from, const NamedFile& to) {
  std::vector<char> block(kBlockSize);
  off_t offset = 0;
  ssize_t count = 0;
  while ((count = pread(from.descriptor, block.data(), block.size(), offset)) != 0) {
    const std::size_t size = checked(count, from.name);
    writeAll(to, block.data(), size);
    offset += static_cast<off_t>(size);
  }
}

}  // namespace vyn::host
