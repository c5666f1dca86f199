#pragma once

#include <functional>
#include <ostream>
#include <string>

namespace vyn::profiling {

/// What a reader has to say, in its two forms.
struct Outputs {
  std::function<void(std::ostream&)> printSummary;
  std::function<void(std::ostream&)> writeCsv;
};

/// Writes the summary to `console` and appends the CSV to the file of that name; to none when the
/// name is empty. The summary is made first and shown last, so that one on the console says that
/// the file is complete. Returns false, with a log line, when the file cannot be opened.
bool writeOutputs(const Outputs& outputs, const std::string& csvFileName, std::ostream& console);

}  // namespace vyn::profiling
