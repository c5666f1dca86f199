#pragma once

#include <string>

#include "files/temp_file.h"
#include "host/input/log_file.h"

namespace vyn::host {

/// Where the log's JSON document goes when the user names no output: the log's own name with
/// ".json", in the current directory.
std::string defaultOutputName(const LogFile& log);

/// What may become of a file of that name: a document of this log is replaced, and where nothing
/// is, nothing that comes meanwhile. Throws FileError when something else is there: logs of other
/// directories have the same name.
files::TempFile::Existing checkDefaultOutput(const std::string& name, const LogFile& log);

}  // namespace vyn::host
