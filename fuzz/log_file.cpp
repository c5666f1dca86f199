#include "log_file.h"

#include <sys/mman.h>
#include <unistd.h>

#include "check.h"

namespace vyn::fuzz {

LogFile::LogFile(const std::uint8_t* bytes, std::size_t size)
    : m_descriptor(memfd_create("log", MFD_CLOEXEC)) {
  const ssize_t written = write(m_descriptor, bytes, size);
  check(written >= 0 && static_cast<std::size_t>(written) == size, "the log fits into memory");
}

LogFile::~LogFile() { close(m_descriptor); }

std::string LogFile::path() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }

}  // namespace vyn::fuzz
