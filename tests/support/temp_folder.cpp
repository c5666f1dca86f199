#include "support/temp_folder.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "support/text_file.h"

namespace vyn::test {
namespace {

std::filesystem::path makeFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "vyn.XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("cannot make " + name);
  }
  return name;
}

}  // namespace

TempFolder::TempFolder() : m_path(makeFolder()) {}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(m_path, ignored);
}

std::vector<std::string> TempFolder::files() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string TempFolder::add(const std::string& name, const std::string& bytes) const {
  writeFile(m_path / name, bytes);
  return path(name);
}

}  // namespace vyn::test
