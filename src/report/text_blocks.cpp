#include "report/text_blocks.h"

#include <cstddef>

namespace vyn::profiling {
namespace {

constexpr std::size_t kBlockSize = std::size_t{64} * 1024;  // bytes

}  // namespace

void TextBlocks::writeTo(std::ostream& stream) const {
  for (const auto& block : m_blocks) {
    const bool isLast = &block == &m_blocks.back();
    stream.write(block.get(), isLast ? pptr() - pbase() : static_cast<std::ptrdiff_t>(kBlockSize));
  }
}

TextBlocks::int_type TextBlocks::overflow(int_type byte) {
  // NOLINTNEXTLINE(modernize-avoid-c-arrays): raw memory
  m_blocks.push_back(std::make_unique_for_overwrite<char[]>(kBlockSize));
  setp(m_blocks.back().get(), m_blocks.back().get() + kBlockSize);
  return traits_type::eq_int_type(byte, traits_type::eof())
             ? traits_type::not_eof(byte)
             : sputc(traits_type::to_char_type(byte));
}

}  // namespace vyn::profiling
