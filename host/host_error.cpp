#include "host_error.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace vyn::host {
namespace {

bool isControl(unsigned char byte) { return byte < 0x20 || byte == 0x7F; }

// The control characters U+0080 to U+009F are 0xC2 and one of these bytes in UTF-8.
bool isHighControl(unsigned char lead, unsigned char byte) {
  return lead == 0xC2 && byte >= 0x80 && byte < 0xA0;
}

std::string escaped(const std::string& text) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string result;
  unsigned char previous = 0;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (isControl(byte) || isHighControl(previous, byte)) {
      result += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 0xF]};
    } else {
      result += character;
    }
    previous = byte;
  }
  return result;
}

}  // namespace

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
    case EBADF:
      return "is closed; open it or choose another output";
    default:
      return std::generic_category().message(error) + "; check the file and its place";
  }
}

void reportLine(const std::string& text) {
  const std::string line = "vyn-profile-viewer: " + escaped(text) + "\n";
  std::fputs(line.c_str(), stderr);
}

}  // namespace vyn::host
