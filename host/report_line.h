#pragma once

#include <string>

#include "cli/program.h"

namespace vyn::host {

inline constexpr char kProgramName[] = "vyn-profile-viewer";

/// Writes one line to standard error, behind the program's name, with what a terminal would obey
/// escaped.
inline void reportLine(const std::string& text) { cli::reportLine(kProgramName, text); }

}  // namespace vyn::host
