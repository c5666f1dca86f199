#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vyn::host {

/// Rows of cells that are printed in aligned columns. Cells of the first column begin at its left
/// end; the others end at the right end of theirs.
class TextTable {
 public:
  explicit TextTable(std::vector<std::string> headings) : m_rows{std::move(headings)} {}

  void add(std::vector<std::string> cells) { m_rows.push_back(std::move(cells)); }

  /// Prints the headings, and the rows a little to the right of them.
  void print(std::ostream& out) const;

 private:
  std::vector<std::vector<std::string>> m_rows;  // the headings, then the others
};

/// Prints names with their values, which begin at one column.
class TextList {
 public:
  explicit TextList(std::ostream& out) : m_out(out) {}

  /// An empty name goes on with the value before.
  void add(const std::string& name, const std::string& value);

 private:
  std::ostream& m_out;
};

}  // namespace vyn::host
