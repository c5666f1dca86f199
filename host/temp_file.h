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
  /// Makes `directory`/.`name`.XXXXXX, open for reading and writing. `subject` is what messages
  /// call it. Throws HostError.
  TempFile(const std::filesystem::path& directory, const std::string& name, std::string subject);
  ~TempFile();
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  const std::string& path() const { return m_path; }
  NamedFile file() const { return {m_descriptor.get(), m_subject}; }

  /// Closes the file and moves it over `target`, in the same directory. Throws HostError.
  void moveTo(const std::filesystem::path& target);

 private:
  std::string m_subject;
  std::string m_path;  // empty once the file was moved
  FileDescriptor m_descriptor;
  std::optional<RemovalOnSignal> m_removal;
};

}  // namespace vyn::host
