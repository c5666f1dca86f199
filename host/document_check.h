#pragma once

#include <string>

#include "file_descriptor.h"
#include "reader_names.h"

namespace vyn::host {

/// Throws HostError unless `file` holds all that the reader had to write: readers do not notice
/// failing writes, and the JSON reader stops at a number that JSON cannot hold. `target` is the
/// output's name for messages about what was written, `file`'s own name is for those about its
/// place.
void checkDocument(const NamedFile& file, OutputKind kind, const std::string& target);

/// Throws HostError when the file cannot grow by a byte, which then is also what cut it short.
void probeGrowth(const NamedFile& file);

}  // namespace vyn::host
