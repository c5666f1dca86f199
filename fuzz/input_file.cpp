#include "input_file.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "check.h"

namespace vyn::fuzz {

InputFile::InputFile(const std::uint8_t* bytes, std::size_t size)
    : m_path((std::filesystem::temp_directory_path() / "input.XXXXXX").string()) {
  const int descriptor = mkstemp(m_path.data());
  check(descriptor != -1, "there is a temporary folder");
  const ssize_t written = write(descriptor, bytes, size);
  close(descriptor);
  check(written >= 0 && static_cast<std::size_t>(written) == size, "there is room for the input");
}

InputFile::~InputFile() { unlink(m_path.c_str()); }

}  // namespace vyn::fuzz
