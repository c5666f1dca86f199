#include "cli/spelling.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string_view>
#include <utility>

namespace vyn::cli {
namespace {

constexpr std::size_t kLettersPerStep = 3;  // of a word: so long a part may hold one mistake

// Steps from the whole of one word to each beginning of the other.
using Row = std::vector<std::size_t>;

std::size_t countSteps(std::string_view from, std::string_view to) {
  Row beforeLast;
  Row last(to.size() + 1);
  for (std::size_t i = 0; i <= to.size(); ++i) {
    last[i] = i;
  }
  for (std::size_t i = 1; i <= from.size(); ++i) {
    Row row(to.size() + 1, i);
    for (std::size_t j = 1; j <= to.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (from[i - 1] == to[j - 1] ? 0 : 1);
      row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
      if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
        row[j] = std::min(row[j], beforeLast[j - 2] + 1);
      }
    }
    beforeLast = std::exchange(last, row);
  }
  return last.back();
}

}  // namespace

std::optional<std::string> findMeant(const std::string& word,
                                     const std::vector<std::string>& candidates) {
  std::optional<std::string> meant;
  std::size_t fewest = std::numeric_limits<std::size_t>::max();
  for (const std::string& candidate : candidates) {
    const std::size_t steps = countSteps(word, candidate);
    const std::size_t allowed = std::max<std::size_t>(1, candidate.size() / kLettersPerStep);
    if (steps <= allowed && steps < fewest) {
      fewest = steps;
      meant = candidate;
    }
  }
  return meant;
}

}  // namespace vyn::cli
