#pragma once

#include <cstddef>
#include <cstdint>

#include "input/byte_source.h"

namespace vyn::profiling {

/// A log from some place on, as long as it was when that was measured. A chunk that would end
/// behind it is not even read, however much of the log a damaged length claims.
class LogPart : public ByteSource {
 public:
  /// The source stands `start` bytes behind the log's beginning; the log has `size` bytes.
  LogPart(SeekableSource& source, std::uint64_t start, std::uint64_t size)
      : m_source(source), m_place(start), m_size(size) {}

  std::size_t read(std::uint8_t* to, std::size_t size) override;
  bool hasFailed() const override { return m_source.hasFailed(); }

  /// Bytes that are still to be read.
  std::uint64_t left() const { return m_size - m_place; }

  /// To be called when somebody else has moved the source: makes it go on where it was.
  void seekBack() { m_source.seek(m_place); }

 private:
  SeekableSource& m_source;
  std::uint64_t m_place;
  std::uint64_t m_size;
};

}  // namespace vyn::profiling
