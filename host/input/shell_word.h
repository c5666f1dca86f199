#pragma once

#include <string>

namespace vyn::host {

/// The text as a shell takes it for one word, to be copied from a message: in quotes where it holds
/// anything that a shell may not take for itself, and what a terminal would obey is escaped.
std::string shellWord(const std::string& text);

}  // namespace vyn::host
