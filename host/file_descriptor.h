#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace vyn::host {

/// Owns an open file descriptor, or none.
class FileDescriptor {
 public:
  FileDescriptor() = default;
  /// Takes what a system call returned; a negative number is no descriptor.
  explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
  FileDescriptor(FileDescriptor&& other) noexcept
      : m_descriptor(std::exchange(other.m_descriptor, kNone)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
  }
  ~FileDescriptor() { close(); }

  bool isOpen() const { return m_descriptor >= 0; }
  int get() const { return m_descriptor; }

  /// Returns 0 or the error number, which may be that of an earlier write.
  int close();

 private:
  static constexpr int kNone = -1;

  int m_descriptor = kNone;
};

/// An open file and what to call it in messages.
struct NamedFile {
  int descriptor;
  std::string name;
};

/// True when both are states of one file, under whatever names.
bool isSameFile(const struct stat& left, const struct stat& right);

/// Bytes. Throws HostError.
std::uint64_t sizeOf(const NamedFile& file);

/// A further descriptor of the same open file, above those of the standard streams. Throws
/// HostError.
FileDescriptor duplicate(const NamedFile& file);

/// True when `descriptor` is a pipe or a socket that nobody reads from any more.
bool isClosedPipe(int descriptor);

/// Throws HostError for the system call on `file` that failed with `error`; ClosedPipe when that is
/// because nobody reads from it any more.
[[noreturn]] void throwFailure(const NamedFile& file, int error);

/// Writes all bytes. Throws HostError, ClosedPipe.
void writeAll(const NamedFile& file, const char* bytes, std::size_t size);

/// Copies the file `from`, from its start to its end, to `to`. Throws HostError, ClosedPipe.
void copyFile(const NamedFile& from, const NamedFile& to);

}  // namespace vyn::host
