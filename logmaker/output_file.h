#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "files/file_descriptor.h"
#include "files/temp_file.h"

namespace vyn::logmaker {

/// A file that appears under its name only when it is complete. "-" is standard output; devices and
/// pipes are written directly. Every failure throws a files::FileError; files::ClosedPipe when
/// nobody reads what is written any more.
class OutputFile {
 public:
  explicit OutputFile(const std::string& name);

  /// Throws unless there is room for a file of so many bytes. Of devices and pipes nothing is
  /// known.
  void expect(std::uint64_t size) const;

  /// Throws when the file is a terminal, which would obey the bytes of a log.
  void refuseTerminal() const;

  void write(const void* data, std::size_t size);

  /// All bytes have left the program, those of a file have reached the disk; nothing may be written
  /// any more.
  void close();

  /// Gives the closed file its name.
  void publish();

 private:
  void openBeside(const std::filesystem::path& target);
  files::NamedFile file() const;
  void flush();

  std::string m_name;
  std::filesystem::path m_target;
  std::optional<files::TempFile> m_temp;  ///< of a file
  files::FileDescriptor m_stream;         ///< of what is written directly
  std::string m_waiting;                  ///< bytes that were not passed on yet
};

}  // namespace vyn::logmaker
