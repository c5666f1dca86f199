#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vyn::test {

/// A folder of its own for one test, removed with it.
class TempFolder {
 public:
  TempFolder();
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::string path(const std::string& name) const { return (m_path / name).string(); }
  /// The names of what lies in the folder, sorted.
  std::vector<std::string> files() const;

  /// Writes a file into the folder and returns its path.
  std::string add(const std::string& name, const std::string& bytes) const;

 private:
  std::filesystem::path m_path;
};

}  // namespace vyn::test
