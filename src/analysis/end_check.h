#pragma once

#include <string_view>

#include "analysis/findings.h"
#include "input/chunk_walk.h"

namespace vyn::profiling {

/// Reports that the log is a file of another format, if its first bytes are of a known one. They
/// tell nothing where a sound chunk stands. Returns whether it is.
bool reportForeignFormat(const WalkResult& walk, std::string_view start, Findings& findings);

/// Reports why no more chunks could be read, unless the log ends where a chunk does.
void reportEnd(const WalkResult& walk, Findings& findings);

/// Reports that no chunk of the log has a header.
void reportNoHeader(Findings& findings);

}  // namespace vyn::profiling
