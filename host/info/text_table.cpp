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

std::string grouped(std::uint64_t number) {
  constexpr std::size_t kGroup = 3;  // digits
  std::string text = std::to_string(number);
  for (std::size_t end = text.size(); end > kGroup; end -= kGroup) {
    text.insert(end - kGroup, 1, ',');
  }
  return text;
}

std::string counted(std::uint64_t number, const std::string& noun) {
  return grouped(number) + " " + noun + (number == 1 ? "" : "s");
}

std::string share(std::uint64_t part, std::uint64_t whole) {
  if (whole == 0) {
    return "-";
  }
  constexpr double kLeastShown = 0.05;
  std::array<char, 16> text{};
  const double percent = 100.0 * static_cast<double>(part) / static_cast<double>(whole);
  if (part > 0 && percent < kLeastShown) {
    return "<0.1 %";
  }
  if (part < whole && percent >= 100 - kLeastShown) {
    return ">99.9 %";
  }
  const auto result =
      std::to_chars(text.data(), text.data() + text.size(), percent, std::chars_format::fixed, 1);
  return std::string(text.data(), result.ptr) + " %";
}

}  // namespace vyn::host
