#pragma once

#include <string>

#include "files/destination.h"
#include "host/input/log_file.h"

namespace vyn::host {

/// Where `name`, as the user gave it, leads to. Throws FileError when nothing can be written there,
/// or when it is the log itself.
files::Destination findDestination(const std::string& name, const LogFile& log);

/// Throws FileError when what is printed to standard output or standard error would go into the
/// log.
void checkStandardStreams(const LogFile& log);

}  // namespace vyn::host
