#pragma once

#include <ostream>

#include "analysis/log_facts.h"

namespace vyn::host {

/// Prints a table for each way to sort messages, events and bytes of a log, the largest count
/// first. Each has 40 rows at most; what they leave out is added up.
void printTables(const profiling::LogFacts& facts, std::ostream& out);

}  // namespace vyn::host
