#include "host/output/scratch_directory.h"

#include <cstdlib>

namespace vyn::host {

std::filesystem::path scratchDirectory() {
  const char* directory = std::getenv("TMPDIR");
  return directory != nullptr && *directory != '\0' ? directory : "/tmp";
}

}  // namespace vyn::host
