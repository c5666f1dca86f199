#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vyn::cli {

/// The candidate that `word` is most probably a misspelling of. None when all are too far from it;
/// a letter that is wrong, missing, too many or swapped with the next is one step.
std::optional<std::string> findMeant(const std::string& word,
                                     const std::vector<std::string>& candidates);

}  // namespace vyn::cli
