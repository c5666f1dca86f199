#pragma once

#include <CLI/App.hpp>
#include <CLI/Error.hpp>
#include <string>

namespace vyn::logmaker {

/// What is wrong with a command line that `app` could not parse, in words for its user.
std::string explainUsage(const CLI::App& app, const CLI::ParseError& error);

}  // namespace vyn::logmaker
