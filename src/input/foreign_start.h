#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vyn::profiling {

/// How many bytes of a file tell its format.
inline constexpr std::size_t kLongestForeignStart = 32;

/// What a file with these first bytes holds instead of a log, and what to do: "is compressed with
/// ...; ...". None when they are not known, and none when a
/// log may begin with them too: a chunk of 2683 bytes has a length that begins like JSON.
std::optional<std::string> recogniseForeignStart(std::string_view start);

/// True when the first bytes of a file, of which there are some, are all of a plain text.
bool looksLikeText(std::string_view start);

}  // namespace vyn::profiling
