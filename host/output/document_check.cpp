#include "host/output/document_check.h"

#include <unistd.h>

#include <cerrno>

#include "files/file_error.h"

namespace vyn::host {
namespace {

constexpr std::size_t kTailSize = 8;  // bytes; longer than any ending that is looked for

[[noreturn]] void throwCutShort(const files::NamedFile& file) {
  probeGrowth(file);
  throw files::FileError(file.name, "the output was cut short; check the disk and try again");
}

void checkJsonDocument(const files::NamedFile& file, const std::string& target) {
  const std::string tail = files::tailOf(file, kTailSize);
  if (tail.ends_with("\n}\n") || tail.ends_with("\n]\n")) {
    return;
  }
  if (tail.ends_with("\": \n")) {
    throw files::FileError(target, std::string("not written, ") + kHoldsNoNumber);
  }
  throwCutShort(file);
}

}  // namespace

void probeGrowth(const files::NamedFile& file) {
  const auto size = static_cast<off_t>(files::sizeOf(file));
  if (pwrite(file.descriptor, "", 1, size) != 1 || ftruncate(file.descriptor, size) != 0) {
    throw files::FileError(file.name, files::explain(errno));
  }
}

void checkDocument(const files::NamedFile& file, OutputKind kind, const std::string& target) {
  switch (kind) {
    case OutputKind::kJsonDocument:
      checkJsonDocument(file, target);
      return;
    case OutputKind::kCsvListing:
      if (!files::tailOf(file, kTailSize).ends_with('\n')) {
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
