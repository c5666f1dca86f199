#pragma once

#include <string>

#include "host/input/log_file.h"
#include "host/reader/reader_library.h"
#include "host/reader/reader_output.h"

namespace vyn::host {

/// A reader of one log, from its making to its end. Whatever the library throws becomes a FileError
/// that names the log, while the library is still loaded.
class GuardedReader {
 public:
  /// Throws FileError when the library makes no reader or one that is not valid.
  GuardedReader(const ReaderLibrary& library, const LogFile& log, profiling::VisibilityLevel level);
  /// Gives the reader back, if `giveBack` did not. What the library throws then is not reported:
  /// another error is on its way.
  ~GuardedReader();
  GuardedReader(const GuardedReader&) = delete;
  GuardedReader& operator=(const GuardedReader&) = delete;

  /// Throws FileError with the reason when the reader refuses the log; what the reader `said` is
  /// one when the log shows none.
  void read(bool writeObjectPayloads, const ReaderOutput& said);

  /// `target` is what messages call the file. Throws FileError, with what the reader `said` last,
  /// when the reader reports a failure.
  void generateOutput(const std::string& file, const std::string& target, const ReaderOutput& said);

  std::string headerDetails();

  /// Gives the reader back to its library. Throws FileError.
  void giveBack();

 private:
  void giveBackQuietly();

  const ReaderLibrary& m_library;
  const LogFile& m_log;
  profiling::ProfileLogReader* m_reader = nullptr;
};

}  // namespace vyn::host
