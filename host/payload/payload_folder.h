#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

namespace vyn::host {

/// The names in a directory, as they were when it was looked at, and which of them are numbered
/// forms of others: "a_1.bin" and "a_2.bin" of "a.bin".
class PayloadFolder {
 public:
  /// Throws FileError when it cannot be listed.
  explicit PayloadFolder(const std::string& directory);

  bool has(const std::string& name) const { return m_names.count(name) != 0; }
  const std::set<std::string>& names() const { return m_names; }

  /// The numbered forms of `name` that are there.
  std::vector<std::string> numberedForms(const std::string& name) const;

 private:
  std::set<std::string> m_names;
  std::map<std::string, std::vector<std::string>> m_formsByName;
};

/// The name that `name` is a numbered form of: of "a_1.bin" it is "a.bin". Empty when it is none.
std::string unnumbered(const std::string& name);

}  // namespace vyn::host
