#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "files/file_descriptor.h"

namespace vyn::host {

/// While it lives, what is printed to standard output gathers in a file without a name, so that a
/// run that fails says no more than the program's own line. Text that nobody asks for is dropped
/// with the object.
class ReaderOutput {
 public:
  /// Throws FileError.
  ReaderOutput();
  ~ReaderOutput();
  ReaderOutput(const ReaderOutput&) = delete;
  ReaderOutput& operator=(const ReaderOutput&) = delete;

  /// The last line so far that is not empty, without the logger's prefix of time and severity: when
  /// a reader fails, its reason. Empty when nothing was printed.
  std::string lastLine() const;

  /// Ends the gathering: from now on standard output is printed to again.
  void end();

  /// The name of the first file that the reader's log says could not be made for a payload.
  std::optional<std::string> unwrittenPayload() const;

  /// How many bytes were printed so far.
  std::uint64_t size() const;

  /// Ends the gathering and writes the text to standard output, to a terminal without what a
  /// terminal would obey. Throws FileError when that fails or the text was not gathered whole,
  /// ClosedPipe when nobody reads it.
  void passOn();

  /// The same to standard error, where it is no loss when it cannot be written.
  void passToStandardError();

 private:
  files::FileDescriptor m_standardOutput;  // open while the text is gathered
  files::FileDescriptor m_text;
};

}  // namespace vyn::host
