#include "log_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "host_error.h"

namespace vyn::host {

LogFile findLog(const std::string& path) {
  LogFile log{path, {}};
  if (stat(path.c_str(), &log.status) != 0) {
    throw HostError(path, explain(errno));
  }
  if (S_ISDIR(log.status.st_mode)) {
    throw HostError(path, explain(EISDIR));
  }
  if (faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) != 0) {
    throw HostError(path, explain(errno));
  }
  return log;
}

}  // namespace vyn::host
