#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace vyn::files {

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

/// Bytes. Throws FileError.
std::uint64_t sizeOf(const NamedFile& file);

/// The last `size` bytes of the file, or all when it has fewer. Throws FileError.
std::string tailOf(const NamedFile& file, std::size_t size);

/// A further descriptor of the same open file, above those of the standard streams. Throws
/// FileError.
FileDescriptor duplicate(const NamedFile& file);

/// True when `descriptor` is a pipe or a socket that nobody reads from any more.
bool isClosedPipe(int descriptor);

/// Throws FileError for the system call on `file` that failed with `error`; ClosedPipe when that is
/// because nobody reads from it any more.
[[noreturn]] void throwFailure(const NamedFile& file, int error);

/// Writes all bytes. Throws FileError, ClosedPipe.
void writeAll(const NamedFile& file, std::string_view bytes);

/// Hands the bytes of the file from `offset` to its end to `take`, a block at a time, wherever the
/// descriptor itself stands. Throws FileError, and what `take` throws.
void readFrom(const NamedFile& file, std::uint64_t offset,
              const std::function<void(std::string_view)>& take);

}  // namespace vyn::files
