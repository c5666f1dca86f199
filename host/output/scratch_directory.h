#pragma once

#include <filesystem>

namespace vyn::host {

/// Where files lie that are there only while the program works: the environment's TMPDIR, or /tmp.
std::filesystem::path scratchDirectory();

}  // namespace vyn::host
