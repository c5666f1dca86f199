#include "host/input/free_memory.h"

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>

#include "base/saturating.h"
#include "files/file_error.h"

namespace vyn::host {
namespace {

// For each byte of a usual log. A log of long texts takes less.
constexpr std::uint64_t kDocumentBytesPerByte = 3;
constexpr std::uint64_t kBytesPerKilobyte = 1024;
constexpr std::uint64_t kBytesPerMegabyte = 1'000'000;

// A number of kilobytes from the system's list; none when it is not there.
std::optional<std::uint64_t> systemFigure(const std::string& name) {
  std::ifstream list("/proc/meminfo");
  std::string key;
  std::uint64_t kilobytes = 0;
  std::string unit;
  while (list >> key >> kilobytes && std::getline(list, unit)) {
    if (key == name + ":") {
      return profiling::saturatingProduct(kilobytes, kBytesPerKilobyte);
    }
  }
  return std::nullopt;
}

std::string megabytes(std::uint64_t bytes) {
  return std::to_string(bytes / kBytesPerMegabyte) + " MB";
}

}  // namespace

void checkRoomForDocument(const LogFile& log) {
  const auto available = systemFigure("MemAvailable");
  if (!log.canBeReadAgain() || !available) {
    return;
  }
  const std::uint64_t free =
      profiling::saturatingSum(*available, systemFigure("SwapFree").value_or(0));
  const std::uint64_t needed = profiling::saturatingProduct(
      static_cast<std::uint64_t>(log.status.st_size), kDocumentBytesPerByte);
  if (needed > free) {
    throw files::FileError(log.name,
                           "its document takes about " + megabytes(needed) + " of memory, and " +
                               megabytes(free) +
                               " are free; write it with vyn-profile-viewer export json, which "
                               "needs no more than a chunk");
  }
}

}  // namespace vyn::host
