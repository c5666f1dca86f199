// The floor under any converter: reads a file and writes a given number of bytes, both with plain
// system calls and nothing in between. Usage: read_and_write INPUT OUTPUT BYTES

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

constexpr std::size_t kBlockSize = std::size_t{1024} * 1024;  // bytes

bool readAll(const char* path, std::vector<char>& block) {
  const int file = open(path, O_RDONLY);
  ssize_t count = 0;
  do {
    count = read(file, block.data(), block.size());
  } while (count > 0);
  close(file);
  return count == 0;
}

bool writeBytes(const char* path, const std::vector<char>& block, std::size_t size) {
  const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC, 0666);
  while (size > 0) {
    const ssize_t count = write(file, block.data(), std::min(size, block.size()));
    if (count <= 0) {
      break;
    }
    size -= static_cast<std::size_t>(count);
  }
  return close(file) == 0 && size == 0;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 4) {
    return 2;
  }
  std::vector<char> block(kBlockSize, ' ');
  const bool done = readAll(arguments[1], block) &&
                    writeBytes(arguments[2], block, std::strtoull(arguments[3], nullptr, 10));
  return done ? EXIT_SUCCESS : EXIT_FAILURE;
}
