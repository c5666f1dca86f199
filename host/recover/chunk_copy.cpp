#include "host/recover/chunk_copy.h"

#include <algorithm>
#include <utility>

namespace vyn::host {
namespace {

std::string_view asText(const std::uint8_t* bytes, std::size_t size) {
  return {reinterpret_cast<const char*>(bytes), size};
}

}  // namespace

void ChunkCopy::chunk(const profiling::Chunk& chunk, const profiling::ChunkPlace& place) {
  if (place.present < place.announced) {
    return;
  }
  const auto length = profiling::lengthBytes(place.announced);
  write(asText(length.data(), length.size()));
  write(asText(chunk.data(), chunk.size));
  const auto* messages = profiling::schema::GetProfileLog(chunk.data())->messages();
  ++m_copied.chunks;
  m_copied.messages += messages == nullptr ? 0 : messages->size();
  m_copied.bytes += length.size() + chunk.size;
}

void ChunkCopy::write(std::string_view bytes) {
  while (!bytes.empty()) {
    if (m_filled == m_block->size()) {
      m_block = m_sink.exchange(std::move(m_block), m_filled);
      m_filled = 0;
    }
    const std::size_t count = std::min(bytes.size(), m_block->size() - m_filled);
    std::copy_n(bytes.begin(), count, m_block->begin() + static_cast<std::ptrdiff_t>(m_filled));
    m_filled += count;
    bytes.remove_prefix(count);
  }
}

void ChunkCopy::finish() {
  m_sink.write({m_block->data(), m_filled});
  m_filled = 0;
}

}  // namespace vyn::host
