#include "host/input/foreign_format.h"

#include <fstream>

#include "input/foreign_start.h"

namespace vyn::host {

std::optional<std::string> recogniseForeignFormat(const std::string& path) {
  std::string start(profiling::kLongestForeignStart, '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(start.data(), static_cast<std::streamsize>(start.size()));
  start.resize(static_cast<std::size_t>(file.gcount()));
  return profiling::recogniseForeignStart(start);
}

}  // namespace vyn::host
