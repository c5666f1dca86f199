// Runs a fuzz target once on every file of the folders and files named on the command line.

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void replay(const std::filesystem::path& path) {
  std::cerr << path.filename().string() << std::endl;  // the last one named is the one that failed
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argumentCount, char** arguments) {
  std::size_t count = 0;
  for (int i = 1; i < argumentCount; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(arguments[i])) {
      replay(entry.path());
      ++count;
    }
  }
  std::cerr << count << " inputs" << std::endl;
  return count > 0 ? 0 : 1;  // a corpus that is not there would hide every finding
}
