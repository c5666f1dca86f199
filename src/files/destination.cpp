#include "files/destination.h"

#include <fcntl.h>
#include <linux/magic.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <system_error>

#include "files/file_error.h"
#include "files/standard_streams.h"
#include "files/temp_file.h"

namespace vyn::files {
namespace {

namespace fs = std::filesystem;

constexpr int kMaxLinks = 40;  // as many as the kernel follows

bool isOnProc(const fs::path& directory) {
  struct statfs system {};
  return statfs(directory.c_str(), &system) == 0 && system.f_type == PROC_SUPER_MAGIC;
}

// The path without symbolic links in its end, even without those that lead to no file yet. Links of
// /proc stay: they stand for open files, not for the names that they show.
fs::path followLinks(fs::path path) {
  std::error_code error;
  for (int i = 0; i < kMaxLinks && fs::is_symlink(fs::symlink_status(path, error)) &&
                  !isOnProc(directoryOf(path));
       ++i) {
    path = path.parent_path() / fs::read_symlink(path, error);
  }
  return path;
}

// The number of the descriptor that a path like /dev/fd/3, links followed, means; none for others.
std::optional<int> descriptorOf(const std::string& name, const fs::path& path) {
  std::error_code error;
  const fs::path directory = fs::canonical(directoryOf(path), error);
  if (error || directory != "/proc/" + std::to_string(getpid()) + "/fd") {
    return std::nullopt;
  }
  const std::string text = path.filename();
  int number = 0;
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (problem != std::errc() || end != text.data() + text.size()) {
    throw FileError(name, "names no open file; give the number of one, as in /dev/fd/3");
  }
  return number;
}

// Standard streams that were closed look the same; writing to them says so.
void checkWritable(const std::string& name, int descriptor) {
  const int flags = fcntl(descriptor, F_GETFL);
  if (descriptor > STDERR_FILENO && flags != -1 && (flags & O_ACCMODE) == O_RDONLY) {
    throw FileError(name, "is open for reading only; open it for writing (3>FILE)");
  }
}

// A file that the shell opened: replacing it would pull it away from the shell and from what others
// write there.
std::optional<int> standardStreamTo(const struct stat& file) {
  for (const int descriptor : {STDOUT_FILENO, STDERR_FILENO}) {
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && isSameFile(status, file)) {
      return descriptor;
    }
  }
  return std::nullopt;
}

// Appending matters for a file that another process holds open, which has no other name to go by.
FileDescriptor openStream(const std::string& name) {
  FileDescriptor stream(open(name.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOCTTY));
  if (!stream.isOpen()) {
    throw FileError(name, explain(errno));
  }
  return stream;
}

FileDescriptor findStream(const std::string& name, const fs::path& path, const struct stat& found) {
  std::error_code error;
  if (!S_ISREG(found.st_mode) || fs::is_symlink(fs::symlink_status(path, error))) {
    return openStream(name);
  }
  const auto descriptor = standardStreamTo(found);
  return descriptor ? duplicate({*descriptor, name}) : FileDescriptor();
}

}  // namespace

Destination findDestination(const std::string& name) {
  if (name == kStandardStreamPath) {
    return {kStandardOutputName, duplicate({STDOUT_FILENO, kStandardOutputName}), {}, {}};
  }
  const fs::path path = followLinks(name);
  if (const auto descriptor = descriptorOf(name, path)) {
    checkWritable(name, *descriptor);
    return {name, duplicate({*descriptor, name}), {}, {}};
  }
  struct stat found {};
  if (stat(name.c_str(), &found) != 0) {
    if (errno != ENOENT) {
      throw FileError(name, explain(errno));
    }
    return {name, FileDescriptor(), path, {}};
  }
  if (S_ISDIR(found.st_mode)) {
    throw FileError(name, explain(EISDIR));
  }
  FileDescriptor stream = findStream(name, path, found);
  if (stream.isOpen()) {
    return {name, std::move(stream), {}, {}};
  }
  return {name, FileDescriptor(), path, found};
}

// In a sticky directory only the owner of the file, or of the directory, may replace it.
void checkReplaceable(const Destination& destination) {
  if (!destination.found) {
    return;
  }
  if (faccessat(AT_FDCWD, destination.file.c_str(), W_OK, AT_EACCESS) != 0) {
    throw FileError(destination.name, explain(errno));
  }
  struct stat directory {};
  if (stat(directoryOf(destination.file).c_str(), &directory) != 0) {
    throw FileError(destination.name, explain(errno));
  }
  const uid_t user = geteuid();
  if ((directory.st_mode & S_ISVTX) != 0 && user != 0 && user != destination.found->st_uid &&
      user != directory.st_uid) {
    throw FileError(destination.name, explain(EPERM));
  }
}

}  // namespace vyn::files
