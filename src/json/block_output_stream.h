#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <ostream>

namespace vyn::profiling {

/// Output stream for RapidJSON's writers that passes the text on in large blocks, so that the whole
/// text never stands in memory. Nothing is reserved ahead, so no text is too long for it.
class BlockOutputStream {
 public:
  using Ch = char;  // the name that RapidJSON looks for

  static constexpr std::size_t kBlockSize = std::size_t{256} * 1024;  // bytes

  explicit BlockOutputStream(std::ostream& file)
      : m_file(file), m_block(std::make_unique<Block>()) {}

  void Put(char character) {  // NOLINT(readability-identifier-naming): RapidJSON calls it
    if (m_used == kBlockSize) {
      writeBlock();
    }
    (*m_block)[m_used++] = character;
  }

  void put(const char* text, std::size_t length) {
    while (length > 0) {
      if (m_used == kBlockSize) {
        writeBlock();
      }
      const std::size_t count = std::min(length, kBlockSize - m_used);
      std::memcpy(m_block->data() + m_used, text, count);
      m_used += count;
      text += count;
      length -= count;
    }
  }

  void putRepeated(char character, std::size_t count) {
    for (; count > kBlockSize - m_used; --count) {
      Put(character);
    }
    std::memset(m_block->data() + m_used, character, count);
    m_used += count;
  }

  /// The writer's own flush at the end of a document; the text goes out with writeBlock.
  void Flush() {}  // NOLINT(readability-identifier-naming): RapidJSON calls it

  /// True when text could not be passed on; what is put then is lost.
  bool hasFailed() const { return !m_file.good(); }

  /// Passes on what has been put since the last block.
  void writeBlock() {
    m_file.write(m_block->data(), static_cast<std::streamsize>(m_used));
    m_used = 0;
  }

 private:
  using Block = std::array<char, kBlockSize>;

  std::ostream& m_file;
  std::unique_ptr<Block> m_block;
  std::size_t m_used = 0;
};

/// Found by RapidJSON's writers, for their indentation.
// NOLINTNEXTLINE(readability-identifier-naming)
inline void PutN(BlockOutputStream& stream, char character, std::size_t count) {
  stream.putRepeated(character, count);
}

}  // namespace vyn::profiling
