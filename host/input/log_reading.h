#pragma once

#include "host/input/log_file.h"
#include "host/input/watched_file.h"
#include "input/log_walk.h"

namespace vyn::host {

/// Walks over all of a log. Throws FileError when it cannot be opened, does not fit into memory, or
/// became shorter meanwhile, and what the sink throws.
profiling::WalkResult walkLogFile(const LogFile& log, profiling::MessageSink& sink,
                                  Progress progress);

}  // namespace vyn::host
