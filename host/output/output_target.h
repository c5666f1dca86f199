#pragma once

#include <string>

#include "files/temp_file.h"
#include "host/output/output_destination.h"

namespace vyn::host {

/// Where the output goes. The reader writes to a file of the target's own (`workFile`); what was
/// written reaches the target only with `deliver`, whole, so that a failed run leaves nothing and
/// destroys nothing.
class OutputTarget {
 public:
  enum class Content {
    kReplaced,  ///< the reader writes the file anew
    kAppended,  ///< the reader writes what is to follow the file's content
    kContinued  ///< the reader gets the file's content and may do with it what it likes
  };

  /// Throws FileError when nothing can be written there.
  OutputTarget(files::Destination destination, Content content, files::TempFile::Existing existing);

  /// For messages.
  const std::string& name() const { return m_destination.name; }

  /// True for standard output, devices and pipes, which other text must not get into.
  bool isStream() const { return m_destination.stream.isOpen(); }

  /// True for a stream to where standard output leads.
  bool isStandardOutput() const;

  const files::TempFile& workFile() const { return m_workFile; }

  /// Puts what the reader wrote into its place. Throws FileError, ClosedPipe.
  void deliver();

 private:
  void copyFoundFile(const files::TempFile& copy) const;
  void deliverToStream();

  files::Destination m_destination;
  Content m_content;
  files::TempFile::Existing m_existing;
  files::TempFile m_workFile;
};

}  // namespace vyn::host
