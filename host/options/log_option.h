#pragma once

#include <CLI/App.hpp>
#include <string>

namespace vyn::host {

/// Adds LOG, which every verb reads, to the command line; parsing it fills `path`.
void addLogOption(CLI::App& commandLine, std::string& path);

}  // namespace vyn::host
