#include "host/input/log_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "files/file_descriptor.h"
#include "files/file_error.h"
#include "files/standard_streams.h"

namespace vyn::host {
namespace {

constexpr char kStandardInputName[] = "standard input";

void checkReadable(const LogFile& log) {
  if (S_ISDIR(log.status.st_mode)) {
    throw files::FileError(log.name, files::explain(EISDIR));
  }
  if (faccessat(AT_FDCWD, log.path.c_str(), R_OK, AT_EACCESS) != 0) {
    throw files::FileError(log.name, files::explain(errno));
  }
}

bool isOpenForReading(int descriptor) {
  const int flags = fcntl(descriptor, F_GETFL);
  return flags != -1 && (flags & O_ACCMODE) != O_WRONLY;
}

// The reader opens standard input anew, by its name in the file system.
LogFile findStandardInput() {
  LogFile log{"/dev/stdin", {}, kStandardInputName, true};
  if (!isOpenForReading(STDIN_FILENO) || fstat(STDIN_FILENO, &log.status) != 0) {
    throw files::FileError(log.name, "is closed; pipe a log into it or give the name of one");
  }
  if (isatty(STDIN_FILENO) != 0) {
    throw files::FileError(log.name, "is a terminal; pipe a log into it or give the name of one");
  }
  if (S_ISSOCK(log.status.st_mode)) {
    throw files::FileError(log.name, "is a socket; put cat and a pipe between them");
  }
  if (log.canBeReadAgain() && lseek(STDIN_FILENO, 0, SEEK_CUR) > 0) {
    throw files::FileError(log.name, "was read from already; give it anew or give the log's name");
  }
  checkReadable(log);
  return log;
}

}  // namespace

LogFile findLog(const std::string& path) {
  if (path == files::kStandardStreamPath) {
    return findStandardInput();
  }
  LogFile log{path, {}, path};
  if (stat(path.c_str(), &log.status) != 0) {
    throw files::FileError(path, files::explain(errno));
  }
  checkReadable(log);
  return log;
}

void checkStillWhole(const LogFile& log) {
  struct stat now {};
  if (log.canBeReadAgain() && stat(log.path.c_str(), &now) == 0 &&
      files::isSameFile(now, log.status) && now.st_size < log.status.st_size) {
    throw files::FileError(log.name,
                           "became shorter while it was read; read it when nobody changes it");
  }
}

}  // namespace vyn::host
