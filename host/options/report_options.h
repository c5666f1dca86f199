#pragma once

#include <CLI/App.hpp>

#include "host/input/log_reading.h"

namespace vyn::host {

/// The form of what a verb tells of a log.
enum class ReportFormat { kText, kJson };

/// Adds --format to the command line; parsing it fills `format`.
void addFormatOption(CLI::App& commandLine, ReportFormat& format);

/// Adds --quiet to the command line; parsing it hides the `progress`.
void addQuietOption(CLI::App& commandLine, Progress& progress);

}  // namespace vyn::host
