#include "report/payload_names.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

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

// Where the extension starts.
std::size_t dotOf(const std::string& name) { return std::min(name.rfind('.'), name.size()); }

std::string numbered(const std::string& name, std::uint64_t number) {
  const std::size_t dot = dotOf(name);
  return name.substr(0, dot) + "_" + std::to_string(number) + name.substr(dot);
}

// The first number from `number` on with which the name is free.
std::uint64_t freeNumber(const std::string& name, std::uint64_t number) {
  while (isTaken(numbered(name, number))) {
    ++number;
  }
  return number;
}

}  // namespace

PayloadNames::Scope::~Scope() {
  if (--m_names.m_scopes == 0) {
    m_names.m_nextNumbers.clear();
  }
}

std::string PayloadNames::freeName(const std::string& name) {
  if (!isTaken(name)) {
    return name;
  }
  Place place;
  if (m_scopes == 0 || !findPlace(name, place)) {
    return numbered(name, freeNumber(name, 1));
  }
  std::uint64_t& number = m_nextNumbers.try_emplace(std::move(place), 1).first->second;
  number = freeNumber(name, number);
  return numbered(name, number);
}

std::size_t PayloadNames::PlaceHash::operator()(const Place& place) const {
  return hash(place.rest) ^ place.folder ^ place.device;
}

bool PayloadNames::findPlace(const std::string& name, Place& place) {
  const std::size_t lastSlash = name.rfind('/', dotOf(name));
  const std::size_t start = lastSlash == std::string::npos ? 0 : lastSlash + 1;
  struct stat status {};
  if (stat(start == 0 ? "." : name.substr(0, start).c_str(), &status) != 0) {
    return false;
  }
  place = {status.st_dev, status.st_ino, name.substr(start)};
  // Behind a dot of a folder's name, slashes may be repeated.
  const auto sameSlash = [](char left, char right) { return left == '/' && right == '/'; };
  place.rest.erase(std::unique(place.rest.begin(), place.rest.end(), sameSlash), place.rest.end());
  return true;
}

}  // namespace vyn::profiling
