#include "files/file_error.h"

#include <cerrno>
#include <system_error>

namespace vyn::files {

std::string explain(int error) {
  switch (error) {
    case ENOENT:
      return "no such file or directory; check the name";
    case ENOTDIR:
      return "a part of its path is not a directory; check the name";
    case EISDIR:
      return "is a directory; give the name of a file";
    case EACCES:
    case EPERM:
      return "no permission; change the permissions or choose another file";
    case EEXIST:
      return "is there already; give another name with --output, or --force to replace it";
    case ENOSPC:
    case EDQUOT:
      return "disk full; free some space or choose another place";
    case EFBIG:
      return "the output is larger than a file may be; raise the limit or choose another place";
    case EPIPE:
      return "closed before the output was complete; keep its reader running";
    case EMFILE:
    case ENFILE:
      return "too many open files; close some or raise the limit (ulimit -n)";
    case EBADF:
      return "is closed; open it or choose another output";
    default:
      return std::generic_category().message(error) + "; check the file and its place";
  }
}

}  // namespace vyn::files
