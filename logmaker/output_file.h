#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

#include "host/interruption.h"

namespace vyn::logmaker {

/// A file that appears under its name only when it is complete: it is written beside it first, and
/// what was written goes when a signal ends the program. "-" is standard output; devices and pipes
/// are written directly. Every failure throws a host::HostError; host::ClosedPipe when nobody reads
/// what is written any more.
class OutputFile {
 public:
  explicit OutputFile(const std::string& name);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  /// Throws unless there is room for a file of so many bytes. Of devices and pipes nothing is
  /// known.
  void expect(std::uint64_t size) const;

  /// Throws when the file is a terminal, which would obey the bytes of a log.
  void refuseTerminal() const;

  void write(const void* data, std::size_t size);

  /// All bytes have left the program; nothing may be written any more.
  void close();

  /// Gives the closed file its name.
  void publish();

 private:
  [[noreturn]] void fail(int errorNumber) const;

  std::string m_name;
  std::filesystem::path m_target;
  std::filesystem::path m_partial;  ///< empty when the target is written directly
  std::optional<host::RemovalOnSignal> m_removal;
  std::FILE* m_file = nullptr;
};

}  // namespace vyn::logmaker
