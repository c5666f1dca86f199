#pragma once

#include <cstdint>

#include "file_descriptor.h"

namespace vyn::host {

/// While it lives, what is printed to standard output is held back, in memory.
class ConsoleCapture {
 public:
  /// Throws HostError.
  ConsoleCapture();
  ~ConsoleCapture() { end(); }
  ConsoleCapture(const ConsoleCapture&) = delete;
  ConsoleCapture& operator=(const ConsoleCapture&) = delete;

  /// From now on standard output is printed to again.
  void end();

  /// How many bytes were printed.
  std::uint64_t size() const;

  /// After the end: prints what was held back. Throws HostError when that fails or some of the text
  /// could not be held, ClosedPipe when nobody reads it.
  void passOn();

 private:
  FileDescriptor m_text;
  FileDescriptor m_standardOutput;  // none once it has its place again
};

}  // namespace vyn::host
