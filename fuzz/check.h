#pragma once

#include <string>

namespace vyn::fuzz {

/// Says what does not hold and aborts, which is what a fuzzer takes for a finding.
void check(bool holds, const std::string& what);

}  // namespace vyn::fuzz
