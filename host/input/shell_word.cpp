#include "host/input/shell_word.h"

#include <string_view>

#include "files/printable_text.h"

namespace vyn::host {
namespace {

constexpr std::string_view kPlain =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789%+,-./:@_";

// With `mark` in place of each quotation mark.
std::string withQuotesAs(std::string_view mark, const std::string& text) {
  std::string result;
  for (const char c : text) {
    result += c == '\'' ? mark : std::string_view(&c, 1);
  }
  return result;
}

// The escapes that make a text printable are those that a shell knows in these quotes.
std::string escaped(const std::string& text) {
  std::string doubled;
  for (const char c : text) {
    doubled.append(c == '\\' ? 2 : 1, c);
  }
  return "$'" + files::printable(withQuotesAs("\\'", doubled), files::LineFeeds::kEscaped) + "'";
}

}  // namespace

std::string shellWord(const std::string& text) {
  if (!text.empty() && text.find_first_not_of(kPlain) == std::string::npos) {
    return text;
  }
  const bool isPrintable = files::printable(text, files::LineFeeds::kEscaped) == text;
  return isPrintable ? "'" + withQuotesAs("'\\''", text) + "'" : escaped(text);
}

}  // namespace vyn::host
