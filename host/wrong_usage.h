#pragma once

#include <CLI/App.hpp>
#include <CLI/Error.hpp>
#include <string>
#include <vector>

namespace vyn::host {

/// What is wrong with a command line that could not be parsed, in words for its user: names the
/// option or the verb that was probably meant. `words` are those of the command line, `app` has
/// parsed them.
std::string explainUsage(const CLI::App& app, const CLI::ParseError& error,
                         const std::vector<std::string>& words);

}  // namespace vyn::host
