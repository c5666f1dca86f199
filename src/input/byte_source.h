#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
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

/// A file, a pipe, or standard input by its name in the file system.
class FileSource : public ByteSource {
 public:
  explicit FileSource(const std::string& path) : m_file(path, std::ios::in | std::ios::binary) {}

  bool isOpen() const { return m_file.is_open(); }

  std::size_t read(std::uint8_t* to, std::size_t size) override;
  bool hasFailed() const override { return m_file.bad(); }

 private:
  std::ifstream m_file;
};

/// Bytes in memory, which must outlive the source.
class MemorySource : public ByteSource {
 public:
  explicit MemorySource(std::span<const std::uint8_t> bytes) : m_rest(bytes) {}

  std::size_t read(std::uint8_t* to, std::size_t size) override;
  bool hasFailed() const override { return false; }

 private:
  std::span<const std::uint8_t> m_rest;
};

}  // namespace vyn::profiling
