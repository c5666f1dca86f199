#pragma once

#include <cstdint>
#include <filesystem>

namespace vyn::fuzz {

/// An empty folder of its own that is the process's current one while this lives, and is then
/// removed with the files in it.
class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  /// Hash of all files' names and bytes.
  std::uint64_t hashOfFiles() const;

 private:
  std::filesystem::path m_previous;
  std::filesystem::path m_path;
};

}  // namespace vyn::fuzz
