#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "file_descriptor.h"
#include "log_file.h"
#include "temp_file.h"

namespace vyn::host {

/// Where the output goes. The reader writes to a file of the target's own (`workFile`); what was
/// written reaches the target only with `deliver`, whole, so that a failed run leaves nothing and
/// destroys nothing.
class OutputTarget {
 public:
  enum class Content {
    kReplaced,  ///< the reader writes the file anew
    kContinued  ///< the reader adds to what the file holds
  };

  /// `name` as the user gave it; "-" is standard output. Throws HostError when nothing can be
  /// written there, or when it is the log itself.
  OutputTarget(const std::string& name, const LogFile& log, Content content);

  /// For messages.
  const std::string& name() const { return m_destination.name; }

  /// True for standard output, devices and pipes, which other text must not get into.
  bool isStream() const { return m_destination.stream.isOpen(); }

  const TempFile& workFile() const { return m_workFile; }

  /// Puts what the reader wrote into its place. Throws HostError.
  void deliver();

 private:
  struct Destination {
    std::string name;
    FileDescriptor stream;             // open when the output is copied there
    std::filesystem::path file;        // else the file to be replaced, no symbolic link
    std::optional<struct stat> found;  // the file's state, if it exists
  };

  static Destination resolve(const std::string& name, const LogFile& log);
  static TempFile makeWorkFile(const Destination& destination);

  void copyFoundFile();
  void adoptMode();

  Destination m_destination;
  TempFile m_workFile;
};

}  // namespace vyn::host
