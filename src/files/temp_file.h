#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "files/file_descriptor.h"
#include "files/interruption.h"

namespace vyn::files {

/// A file that is there only while the program works on it: removed with the object, or when a
/// signal ends the program, unless it was given a lasting name.
class TempFile {
 public:
  enum class Existing {
    kReplaced,  ///< a file of the lasting name is replaced
    kRefused    ///< the lasting name must be free
  };

  /// Makes `directory`/.`name`.XXXXXX, open for reading and writing. `subject` is what messages
  /// call it. Throws FileError.
  TempFile(const std::filesystem::path& directory, const std::string& name, std::string subject);
  ~TempFile();
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  const std::string& path() const { return m_path; }
  NamedFile file() const { return {m_descriptor.get(), m_subject}; }

  /// Makes the file ready to be `target`: gives it the permissions and, where that is allowed, the
  /// owner of the file that is there, or the permissions of a new one, brings it to the disk and
  /// closes it. To be called once, when all is written. Throws FileError.
  void finish(const std::filesystem::path& target);

  /// Gives the finished file the name `target`, in the same directory. Throws FileError.
  void moveTo(const std::filesystem::path& target, Existing existing);

 private:
  std::string m_subject;
  std::string m_path;  // empty once the file was moved
  FileDescriptor m_descriptor;
  std::optional<RemovalOnSignal> m_removal;
};

/// The directory to make a file beside `file` in.
std::filesystem::path directoryOf(const std::filesystem::path& file);

}  // namespace vyn::files
