#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <optional>
#include <span>
#include <string>

namespace vyn::profiling {

/// Where a log's bytes come from, in order and once.
class ByteSource {
 public:
  virtual ~ByteSource() = default;

  /// Puts up to `size` bytes to `to` and returns how many: fewer only at the end, or where the
  /// source fails.
  virtual std::size_t read(std::uint8_t* to, std::size_t size) = 0;

  /// True once the system could not give bytes that should be there.
  virtual bool hasFailed() const = 0;
};

/// A source that can be read from any place, unless it turns out to be a pipe.
class SeekableSource : public ByteSource {
 public:
  /// In bytes; none where it is not known, which is where `seek` cannot be called.
  virtual std::optional<std::uint64_t> size() const = 0;

  /// Has the next `read` begin behind the first `offset` bytes.
  virtual void seek(std::uint64_t offset) = 0;
};

/// A file, a pipe, or standard input by its name in the file system.
class FileSource : public SeekableSource {
 public:
  explicit FileSource(const std::string& path);

  bool isOpen() const { return m_file.is_open(); }

  std::size_t read(std::uint8_t* to, std::size_t size) override;
  bool hasFailed() const override { return m_file.bad(); }
  std::optional<std::uint64_t> size() const override { return m_size; }
  void seek(std::uint64_t offset) override;

 private:
  std::ifstream m_file;
  std::optional<std::uint64_t> m_size;  // when it was opened
};

/// Bytes in memory, which must outlive the source.
class MemorySource : public SeekableSource {
 public:
  explicit MemorySource(std::span<const std::uint8_t> bytes) : m_bytes(bytes), m_rest(bytes) {}

  std::size_t read(std::uint8_t* to, std::size_t size) override;
  bool hasFailed() const override { return false; }
  std::optional<std::uint64_t> size() const override { return m_bytes.size(); }
  void seek(std::uint64_t offset) override { m_rest = m_bytes.subspan(offset); }

 private:
  std::span<const std::uint8_t> m_bytes;
  std::span<const std::uint8_t> m_rest;
};

}  // namespace vyn::profiling
