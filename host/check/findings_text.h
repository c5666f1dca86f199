#pragma once

#include <ostream>
#include <string>

#include "analysis/findings.h"

namespace vyn::host {

/// Prints what is wrong with the log of that name: a line for each finding that was kept, in the
/// log's order, with what to do below the first one of its code; a line for the rest of each code;
/// a line that sums up.
void printFindings(const profiling::Findings& findings, const std::string& log, std::ostream& out);

}  // namespace vyn::host
