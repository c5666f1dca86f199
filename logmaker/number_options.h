#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>

namespace vyn::logmaker {

/// The numbers from the least to the largest, both included.
struct NumberRange {
  std::uint64_t least;
  std::uint64_t largest;
};

/// Takes a whole decimal number in the range and nothing else. To be used as a transformation, for
/// the library itself wraps negative numbers around, cuts large ones and reads 010 as 8.
CLI::Validator wholeNumber(NumberRange range);

/// Takes a size in the range, a whole number of bytes or of a unit, and turns it into bytes. To be
/// used as a transformation.
CLI::Validator size(NumberRange bytes);

}  // namespace vyn::logmaker
