#include "host/info/text_table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>

namespace vyn::host {
namespace {

constexpr char kIndent[] = "  ";
constexpr std::size_t kMaxNameWidth = 60;  // longer names do not move the other rows' cells
constexpr std::size_t kListNameWidth = 18;

// In characters, of a text in UTF-8.
std::size_t widthOf(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
  }));
}

std::string blanks(const std::string& text, std::size_t width) {
  return std::string(width - std::min(width, widthOf(text)), ' ');
}

std::vector<std::size_t> widthsOf(const std::vector<std::vector<std::string>>& rows) {
  std::vector<std::size_t> widths(rows.front().size());
  for (const auto& row : rows) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths[i] = std::max(widths[i], widthOf(row[i]));
    }
  }
  widths[0] = std::min(widths[0], kMaxNameWidth);
  return widths;
}

}  // namespace

void TextTable::print(std::ostream& out) const {
  const std::vector<std::size_t> widths = widthsOf(m_rows);
  for (const auto& row : m_rows) {
    const bool isHeading = &row == &m_rows.front();
    out << (isHeading ? "" : kIndent) << row[0] << blanks(row[0], widths[0])
        << (isHeading ? kIndent : "");
    for (std::size_t i = 1; i < row.size(); ++i) {
      out << kIndent << blanks(row[i], widths[i]) << row[i];
    }
    out << '\n';
  }
}

void TextList::add(const std::string& name, const std::string& value) {
  m_out << kIndent << name << blanks(name, kListNameWidth) << value << '\n';
}

}  // namespace vyn::host
