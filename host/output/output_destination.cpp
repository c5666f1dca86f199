#include "host/output/output_destination.h"

#include <fcntl.h>
#include <unistd.h>

#include "files/file_error.h"
#include "files/standard_streams.h"

namespace vyn::host {
namespace {

constexpr char kIsTheLog[] = "is the log itself; give another name for the output";

bool isLog(const struct stat& status, const LogFile& log) {
  return S_ISREG(log.status.st_mode) && files::isSameFile(status, log.status);
}

bool isLog(int descriptor, const LogFile& log) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && isLog(status, log);
}

}  // namespace

files::Destination findDestination(const std::string& name, const LogFile& log) {
  files::Destination destination = files::findDestination(name);
  if (isLog(destination.stream.get(), log) ||
      (destination.found && isLog(*destination.found, log))) {
    throw files::FileError(destination.name, kIsTheLog);
  }
  files::checkReplaceable(destination);
  return destination;
}

void checkStandardStreams(const LogFile& log) {
  if (isLog(STDERR_FILENO, log)) {
    // The message must not go there either.
    files::FileDescriptor nowhere(open("/dev/null", O_WRONLY | O_CLOEXEC));
    dup2(nowhere.get(), STDERR_FILENO);
    throw files::FileError("standard error", kIsTheLog);
  }
  if (isLog(STDOUT_FILENO, log)) {
    throw files::FileError(files::kStandardOutputName, kIsTheLog);
  }
}

}  // namespace vyn::host
