#pragma once

#include <string_view>

#include "files/file_descriptor.h"

namespace vyn::host {

/// Writes a text that holds names of a log: to a terminal as `printable` shows it, with its line
/// feeds, to anything else byte for byte. Throws FileError, ClosedPipe.
void writeForeignText(const files::NamedFile& to, std::string_view text);

}  // namespace vyn::host
