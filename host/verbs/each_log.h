#pragma once

#include <functional>
#include <string>
#include <vector>

#include "host/input/log_file.h"

namespace vyn::host {

/// Has `read` read each of the logs, in order, and returns the gravest of the exit statuses: that
/// of a failure before that of a damaged log. A log that cannot be read is reported and does not
/// keep the others from being read.
int readEachLog(const std::vector<std::string>& paths,
                const std::function<int(const LogFile&)>& read);

}  // namespace vyn::host
