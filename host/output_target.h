#pragma once

#include <string>

#include "output_destination.h"
#include "temp_file.h"

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

  /// Throws HostError when nothing can be written there.
  OutputTarget(OutputDestination destination, Content content, TempFile::Existing existing);

  /// For messages.
  const std::string& name() const { return m_destination.name; }

  /// True for standard output, devices and pipes, which other text must not get into.
  bool isStream() const { return m_destination.stream.isOpen(); }

  /// True for a stream to where standard output leads.
  bool isStandardOutput() const;

  const TempFile& workFile() const { return m_workFile; }

  /// Puts what the reader wrote into its place. Throws HostError, ClosedPipe.
  void deliver();

 private:
  void copyFoundFile(const TempFile& copy) const;
  void moveIntoPlace(TempFile& file) const;
  void deliverToStream();

  OutputDestination m_destination;
  Content m_content;
  TempFile::Existing m_existing;
  TempFile m_workFile;
};

}  // namespace vyn::host
