#pragma once

#include "host/input/log_file.h"

namespace vyn::host {

/// Throws FileError when the log's document would take far more memory than the machine has free:
/// it names the verb that needs none. What cannot be told is let pass.
void checkRoomForDocument(const LogFile& log);

}  // namespace vyn::host
