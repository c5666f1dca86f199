#pragma once

#include <CLI/App.hpp>
#include <string>

#include "host/reader/reader_names.h"

namespace vyn::host {

/// Throws CLI::ValidationError when the command line names an option that a reader with this kind
/// of output ignores. Readers from elsewhere may take them all.
void refuseIgnoredOptions(const CLI::App& commandLine, OutputKind kind);

/// The same for --force when the document of the log at `path` goes to standard output by default.
void refuseForceWithoutFile(const CLI::App& commandLine, const std::string& path);

}  // namespace vyn::host
