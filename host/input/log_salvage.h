#pragma once

#include "host/input/log_file.h"
#include "host/input/loss_report.h"
#include "host/input/watched_file.h"
#include "input/salvage.h"

namespace vyn::host {

/// Hands what is sound of the log to the sink, as profiling::salvageLog does, and what is lost to
/// the report. A pipe that is to be searched is copied to a temporary file first. Throws FileError
/// when the log cannot be opened or read, does not fit into memory, or became shorter meanwhile,
/// and what the sink throws.
void salvageLogFile(const LogFile& log, profiling::MessageSink& sink, LossReport& losses,
                    const profiling::SalvageOptions& options, Progress progress);

}  // namespace vyn::host
