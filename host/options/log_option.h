#pragma once

#include <CLI/App.hpp>
#include <string>
#include <vector>

namespace vyn::host {

/// Adds LOG, which every verb reads, to the command line; parsing it fills `path`.
void addLogOption(CLI::App& commandLine, std::string& path);

/// The same for a verb that reads several logs, one after the other.
void addLogsOption(CLI::App& commandLine, std::vector<std::string>& paths);

/// Throws CLI::ValidationError when standard input is named more than once among the logs.
void refuseRepeatedStandardInput(const std::vector<std::string>& paths);

}  // namespace vyn::host
