#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>

#include "files/file_descriptor.h"

namespace vyn::files {

/// What the name of an output leads to.
struct Destination {
  std::string name;                  ///< for messages
  FileDescriptor stream;             ///< open when the output is written there
  std::filesystem::path file;        ///< else the file to be made or replaced, no symbolic link
  std::optional<struct stat> found;  ///< that file's state, if it exists
};

/// Where `name`, as the user gave it, leads to; "-" is standard output. Devices, pipes and whatever
/// a shell has opened (/dev/stdout, /dev/fd/3) are streams. Throws FileError when nothing can be
/// written there.
Destination findDestination(const std::string& name);

/// Throws FileError when the user may not replace the file that is there.
void checkReplaceable(const Destination& destination);

}  // namespace vyn::files
