#pragma once

#include <string>

namespace vyn::profiling {

/// Writes what the process has read so far to a file, which is made anew: the first time the one
/// log's object, afterwards the array of all. Returns false, with a log line, when the file has no
/// name or cannot be opened, and without one, leaving the file empty, when the first output finds
/// not exactly one log.
bool writeDocument(const std::string& fileName);

}  // namespace vyn::profiling
