#include "support/text_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>

namespace vyn::test {

std::string readFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary);
  file << bytes;
  EXPECT_TRUE(file.flush().good()) << path;
}

std::string masked(const std::string& text) {
  const std::regex elapsed(R"( *[0-9]+\.[0-9]ms \[)");
  const std::regex version(R"(v[0-9]+\.[0-9]+\.[0-9]+\.[0-9]{12}_[0-9]+)");
  return std::regex_replace(std::regex_replace(text, elapsed, "<ms> ["), version, "<version>");
}

}  // namespace vyn::test
