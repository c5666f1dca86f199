#pragma once

#include <string>
#include <string_view>

namespace vyn::profiling {

/// True when the bytes are well-formed UTF-8: no overlong forms, no surrogates, nothing above
/// U+10FFFF.
bool isUtf8(std::string_view bytes);

/// The text with U+FFFD for each byte that is not part of well-formed UTF-8, as documents must be
/// that hold names of a log.
std::string withoutInvalidUtf8(std::string_view bytes);

}  // namespace vyn::profiling
