#pragma once

#include <ostream>
#include <string>

#include "analysis/log_facts.h"

namespace vyn::host {

/// Prints the facts of a log for people: the log's name, an overview, its header, and a table for
/// each way to sort what it holds. What a terminal obeys is escaped.
void printFacts(const std::string& logName, const profiling::LogFacts& facts, std::ostream& out);

}  // namespace vyn::host
