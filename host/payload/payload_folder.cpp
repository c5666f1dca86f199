#include "host/payload/payload_folder.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "files/file_error.h"

namespace vyn::host {

PayloadFolder::PayloadFolder(const std::string& directory) {
  std::error_code error;
  for (auto entry = std::filesystem::directory_iterator(directory, error);
       !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    const std::string name = entry->path().filename();
    m_names.insert(name);
    if (const std::string original = unnumbered(name); !original.empty()) {
      m_formsByName[original].push_back(name);
    }
  }
  if (error) {
    throw files::FileError(directory, files::explain(error.value()));
  }
}

std::vector<std::string> PayloadFolder::numberedForms(const std::string& name) const {
  const auto found = m_formsByName.find(name);
  return found != m_formsByName.end() ? found->second : std::vector<std::string>();
}

std::string unnumbered(const std::string& name) {
  const std::size_t dot = std::min(name.rfind('.'), name.size());
  const std::size_t lastOther = name.find_last_not_of("0123456789", dot == 0 ? 0 : dot - 1);
  if (dot == 0 || lastOther == std::string::npos || name[lastOther] != '_' ||
      lastOther + 1 == dot) {
    return "";
  }
  return name.substr(0, lastOther) + name.substr(dot);
}

}  // namespace vyn::host
