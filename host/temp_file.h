#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "file_descriptor.h"
#include "interruption.h"

namespace vyn::host {

/// A file that is there only while the program works on it: removed with the object, or when a
/// signal ends the program, unless it was given a lasting name.
class TempFile {
 public:
  enum class Existing {
    kReplaced,  ///< a file of the lasting name is replaced
    kRefused    ///< the lasting name must be free
  };

  /// Makes `directory`/.`name`.XXXXXX, open for reading and writing. `subject` is what messages
  /// call it. Throws HostError.
  TempFile(const std::filesystem::path& directory, const std::string& name, std::string subject);
  ~TempFile();
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  const std::string& path() const { return m_path; }
  NamedFile file() const { return {m_descriptor.get(), m_subject}; }

  /// Brings the file to the disk, closes it and gives it the name `target`, in the same directory.
  /// Throws HostError.
  void moveTo(const std::filesystem::path& target, Existing existing);

 private:
  std::string m_subject;
  std::string m_path;  // empty once the file was moved
  FileDescriptor m_descriptor;
  std::optional<RemovalOnSignal> m_removal;
};

}  // namespace vyn::host
