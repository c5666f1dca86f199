#pragma once

#include <cstdint>
#include <string>

#include "analysis/log_facts.h"
#include "files/printable_text.h"
#include "host/output/shown_numbers.h"

namespace vyn::host {

/// A text of a log on one line, with what a terminal obeys escaped.
inline std::string shown(const std::string& text) {
  return files::printable(text, files::LineFeeds::kEscaped);
}

/// The same of the beginning of a text, with the size of the whole: "resne... (300 bytes)".
inline std::string shown(const profiling::KeptText& text) {
  return shown(text.start) +
         (text.isWhole() ? "" : "... (" + groupedCount(text.size, "byte") + ")");
}

}  // namespace vyn::host
