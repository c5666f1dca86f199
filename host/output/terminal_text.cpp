#include "host/output/terminal_text.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>

#include "files/printable_text.h"

namespace vyn::host {
namespace {

constexpr std::size_t kPieceSize = std::size_t{1} << 16;  // bytes
constexpr std::size_t kLongestSequence = 4;               // bytes of a character

bool continuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

// The beginning of the text that is escaped by itself as it is within the whole.
std::string_view firstPiece(std::string_view text) {
  std::size_t size = std::min(text.size(), kPieceSize);
  for (std::size_t i = 1; i < kLongestSequence && size < text.size(); ++i) {
    size += continuesCharacter(text[size]) ? 1 : 0;
  }
  return text.substr(0, size);
}

}  // namespace

void writeForeignText(const files::NamedFile& to, std::string_view text) {
  if (isatty(to.descriptor) == 0) {
    files::writeAll(to, text);
    return;
  }
  while (!text.empty()) {
    const std::string_view piece = firstPiece(text);
    const std::string shown = files::printable(piece, files::LineFeeds::kKept);
    files::writeAll(to, shown);
    text.remove_prefix(piece.size());
  }
}

}  // namespace vyn::host
