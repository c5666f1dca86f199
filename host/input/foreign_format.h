#pragma once

#include <optional>
#include <string>

namespace vyn::host {

/// What the file that is no log holds instead, and what to do: "is compressed with ...; ...". None
/// when its first bytes are not known.
std::optional<std::string> recogniseForeignFormat(const std::string& path);

}  // namespace vyn::host
