#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>

#include "files/file_descriptor.h"
#include "host/input/log_file.h"

namespace vyn::host {

/// What the name of an output leads to.
struct OutputDestination {
  std::string name;                  ///< for messages
  files::FileDescriptor stream;      ///< open when the output is copied there
  std::filesystem::path file;        ///< else the file to be replaced, no symbolic link
  std::optional<struct stat> found;  ///< that file's state, if it exists
};

/// Where `name`, as the user gave it, leads to; "-" is standard output. Devices, pipes and whatever
/// a shell has opened (/dev/stdout, /dev/fd/3) are streams. Throws FileError when nothing can be
/// written there, or when it is the log itself.
OutputDestination findDestination(const std::string& name, const LogFile& log);

/// Throws FileError when what is printed to standard output or standard error would go into the
/// log.
void checkStandardStreams(const LogFile& log);

}  // namespace vyn::host
