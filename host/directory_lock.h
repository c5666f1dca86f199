#pragma once

#include <filesystem>

#include "file_descriptor.h"

namespace vyn::host {

/// While it lives, no other run of the program that takes the lock works in the directory. Where
/// the file system has no locks, or the directory may not be read, there is none.
class DirectoryLock {
 public:
  /// Waits until the directory is free.
  explicit DirectoryLock(const std::filesystem::path& directory);

 private:
  FileDescriptor m_directory;
};

}  // namespace vyn::host
