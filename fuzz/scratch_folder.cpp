#include "scratch_folder.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "check.h"
#include "hashed_output.h"

namespace vyn::fuzz {

ScratchFolder::ScratchFolder() : m_previous(std::filesystem::current_path()) {
  std::string name = (std::filesystem::temp_directory_path() / "fuzz.XXXXXX").string();
  check(mkdtemp(name.data()) != nullptr, "there is room for a scratch folder");
  m_path = name;
  std::filesystem::current_path(m_path);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  std::filesystem::current_path(m_previous, ignored);
  std::filesystem::remove_all(m_path, ignored);
}

std::uint64_t ScratchFolder::hashOfFiles() const {
  std::vector<std::filesystem::path> paths;
  for (const auto& entry : std::filesystem::directory_iterator(m_path)) {
    paths.push_back(entry.path().filename());
  }
  std::sort(paths.begin(), paths.end());
  Hash hash;
  for (const auto& path : paths) {
    std::ifstream file(m_path / path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    hash.add(path.c_str(), path.native().size() + 1);
    hash.add(bytes.data(), bytes.size());
  }
  return hash.value();
}

}  // namespace vyn::fuzz
