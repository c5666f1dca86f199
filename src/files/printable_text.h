#pragma once

#include <string>
#include <string_view>

namespace vyn::files {

enum class LineFeeds { kEscaped, kKept };

/// The text as a terminal may get it: control characters, marks that turn the direction of writing,
/// line separators and bytes that are no valid UTF-8 are shown as \xNN for each of their bytes.
/// All other text stays as it is.
std::string printable(std::string_view text, LineFeeds lineFeeds);

}  // namespace vyn::files
