#include "support/temp_folder.h"

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

std::string TempFolder::add(const std::string& name, const std::string& bytes) const {
  writeFile(m_path / name, bytes);
  return path(name);
}

}  // namespace vyn::test
