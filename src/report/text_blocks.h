#pragma once

#include <memory>
#include <ostream>
#include <streambuf>
#include <vector>

namespace vyn::profiling {

/// Keeps a text of any length in blocks of one size, so that it is never copied to make room and
/// stands in memory once. Only the last block has unused space.
class TextBlocks : public std::streambuf {
 public:
  /// Writes the whole text, without a flush.
  void writeTo(std::ostream& stream) const;

 protected:
  int_type overflow(int_type byte) override;

 private:
  std::vector<std::unique_ptr<char[]>> m_blocks;  // NOLINT(modernize-avoid-c-arrays): raw memory
};

}  // namespace vyn::profiling
