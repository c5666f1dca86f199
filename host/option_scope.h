#pragma once

#include <CLI/App.hpp>

#include "reader_names.h"

namespace vyn::host {

/// Throws CLI::ValidationError when the command line names an option that a reader with this kind
/// of output ignores. Readers from elsewhere may take them all.
void refuseIgnoredOptions(const CLI::App& commandLine, OutputKind kind);

}  // namespace vyn::host
