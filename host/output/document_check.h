#pragma once

#include <string>

#include "files/file_descriptor.h"
#include "host/reader/reader_names.h"

namespace vyn::host {

/// Why a document is not written, or breaks off.
inline constexpr char kHoldsNoNumber[] =
    "for the log holds a value that is not a number (NaN or infinity), which JSON cannot hold; "
    "read "
    "the log with --reader summary";

/// Throws FileError unless `file` holds all that the reader had to write: readers do not notice
/// failing writes, and the JSON reader stops at a number that JSON cannot hold. `target` is the
/// output's name for messages about what was written, `file`'s own name is for those about its
/// place.
void checkDocument(const files::NamedFile& file, OutputKind kind, const std::string& target);

/// Throws FileError when the file cannot grow by a byte, which then is also what cut it short.
void probeGrowth(const files::NamedFile& file);

}  // namespace vyn::host
