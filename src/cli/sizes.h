#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace vyn::cli {

/// A size as a command line gives it.
struct ParsedSize {
  std::uint64_t bytes = 0;
  std::errc problem = {};  ///< invalid_argument: no size; result_out_of_range: too large
};

/// Reads a whole number of bytes or of a unit. Capitals do not matter, and the last B may be left
/// out: "500MB", "2 gi".
ParsedSize parseSize(std::string_view text);

/// The units that a size may have, for the help: "B, KB, ...".
std::string sizeUnits();

}  // namespace vyn::cli
