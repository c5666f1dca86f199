#include "document_check.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

#include "host_error.h"

namespace vyn::host {
namespace {

constexpr std::size_t kTailSize = 8;  // bytes; longer than any ending that is looked for

std::string tailOf(const NamedFile& file) {
  const auto size = static_cast<off_t>(sizeOf(file));
  const off_t start = size - std::min(size, static_cast<off_t>(kTailSize));
  std::array<char, kTailSize> tail{};
  const ssize_t count = pread(file.descriptor, tail.data(), tail.size(), start);
  if (count < 0) {
    throw HostError(file.name, explain(errno));
  }
  return {tail.data(), static_cast<std::size_t>(count)};
}

[[noreturn]] void throwCutShort(const NamedFile& file) {
  probeGrowth(file);
  throw HostError(file.name, "the output was cut short; check the disk and try again");
}

void checkJsonDocument(const NamedFile& file, const std::string& target) {
  const std::string tail = tailOf(file);
  if (tail.ends_with("\n}\n") || tail.ends_with("\n]\n")) {
    return;
  }
  if (tail.ends_with("\": \n")) {
    throw HostError(target, kHoldsNoNumber);
  }
  throwCutShort(file);
}

}  // namespace

void probeGrowth(const NamedFile& file) {
  const auto size = static_cast<off_t>(sizeOf(file));
  if (pwrite(file.descriptor, "", 1, size) != 1 || ftruncate(file.descriptor, size) != 0) {
    throw HostError(file.name, explain(errno));
  }
}

void checkDocument(const NamedFile& file, OutputKind kind, const std::string& target) {
  switch (kind) {
    case OutputKind::kJsonDocument:
      checkJsonDocument(file, target);
      return;
    case OutputKind::kCsvListing:
      if (!tailOf(file).ends_with('\n')) {
        throwCutShort(file);
      }
      // A listing has no end mark: that it could still grow tells that nothing is missing.
      probeGrowth(file);
      return;
    case OutputKind::kUnknown:
      probeGrowth(file);
      return;
  }
}

}  // namespace vyn::host
