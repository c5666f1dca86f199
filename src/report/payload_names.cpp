#include "report/payload_names.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace vyn::profiling {
namespace {

// Opening these to look could wait for ever or set something off.
bool isPipeOrDevice(const std::string& name) {
  struct stat status {};
  return stat(name.c_str(), &status) == 0 &&
         (S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode));
}

bool isTaken(const std::string& name) {
  if (isPipeOrDevice(name)) {
    return true;
  }
  const int file = open(name.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (file == -1) {
    return errno == EWOULDBLOCK;  // another program's lease on the file
  }
  close(file);
  return true;
}

std::string numbered(const std::string& name, std::uint64_t number) {
  const std::size_t dot = std::min(name.rfind('.'), name.size());
  return name.substr(0, dot) + "_" + std::to_string(number) + name.substr(dot);
}

}  // namespace

std::string PayloadNames::freeName(const std::string& name) {
  if (!isTaken(name)) {
    return name;
  }
  std::uint64_t& number = m_nextNumbers.try_emplace(name, 1).first->second;
  while (isTaken(numbered(name, number))) {
    ++number;
  }
  return numbered(name, number);
}

}  // namespace vyn::profiling
