#pragma once

#include <sys/stat.h>

#include <string>

namespace vyn::host {

/// The log to be read, and what it was when the program started.
struct LogFile {
  std::string path;
  struct stat status;
  std::string name;  ///< for messages; mostly the path
  bool isStandardInput = false;

  /// A pipe is not: what a reader took from it is gone.
  bool canBeReadAgain() const { return S_ISREG(status.st_mode); }
};

/// Of a log.
inline constexpr char kNotEnoughMemory[] =
    "not enough memory to read it; free some memory or read a shorter log";

/// Finds the log without opening it, as opening a pipe would take its writer away from the reader.
/// `path` as the user gave it; files::kStandardStreamPath is one too. Throws FileError when it is
/// not there, is a directory, or may not be read.
LogFile findLog(const std::string& path);

/// Throws FileError when the log has become shorter since it was found: what was read of it is not
/// all that it held, even if it looks whole.
void checkStillWhole(const LogFile& log);

}  // namespace vyn::host
