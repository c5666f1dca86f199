#include "input/byte_window.h"

#include <algorithm>

namespace vyn::profiling {
namespace {

// Bytes.
constexpr std::size_t kWindowSize = std::size_t{1} << 20;
constexpr std::size_t kLookAhead = std::size_t{1} << 14;
constexpr std::size_t kStraySize = 256;

}  // namespace

ByteWindow::ByteWindow(SeekableSource& source, std::uint64_t size)
    : m_source(source), m_size(size) {
  m_window.bytes.resize(std::min<std::uint64_t>(kWindowSize, size));
  m_stray.bytes.resize(kStraySize);
}

std::span<const std::uint8_t> ByteWindow::ahead(std::uint64_t offset) {
  const std::uint64_t needed = std::min<std::uint64_t>(kLookAhead, m_size - offset);
  if (!m_window.holds(offset, needed)) {
    fill(m_window, offset);
  }
  const std::span<const std::uint8_t> filled(m_window.bytes.data(), m_window.filled);
  return filled.subspan(std::min<std::uint64_t>(offset - m_window.offset, filled.size()));
}

void ByteWindow::fill(Block& block, std::uint64_t offset) {
  m_source.seek(offset);
  block.offset = offset;
  block.filled = m_source.read(block.bytes.data(),
                               std::min<std::uint64_t>(block.bytes.size(), m_size - offset));
}

const std::uint8_t* ByteWindow::bytesAt(std::uint64_t offset, std::size_t count) {
  if (m_window.holds(offset, count)) {
    return m_window.bytes.data() + (offset - m_window.offset);
  }
  if (!m_stray.holds(offset, count)) {
    fill(m_stray, offset);
    m_strayBytes += m_stray.bytes.size();
  }
  return m_stray.holds(offset, count) ? m_stray.bytes.data() + (offset - m_stray.offset) : nullptr;
}

std::optional<std::vector<std::uint8_t>> bytesFrom(SeekableSource& source, std::uint64_t offset,
                                                   std::size_t count) {
  std::vector<std::uint8_t> bytes(count);
  source.seek(offset);
  if (source.read(bytes.data(), count) < count) {
    return std::nullopt;
  }
  return bytes;
}

}  // namespace vyn::profiling
