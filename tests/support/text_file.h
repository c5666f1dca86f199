#pragma once

#include <filesystem>
#include <string>

namespace vyn::test {

/// All bytes of a file; fails the test when it cannot be read.
std::string readFile(const std::filesystem::path& path);

void writeFile(const std::filesystem::path& path, const std::string& bytes);

/// The text with what changes from run to run replaced: the elapsed time at the start of log lines
/// ("     0.1ms [" becomes "<ms> [") and the viewer's version text ("<version>").
std::string masked(const std::string& text);

}  // namespace vyn::test
