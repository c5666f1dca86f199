#include "host/output/output_destination.h"

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

namespace vyn::host {
namespace {

namespace fs = std::filesystem;

constexpr char kIsTheLog[] = "is the log itself; give another name for the output";
constexpr int kMaxLinks = 40;  // as many as the kernel follows

bool isLog(int descriptor, const LogFile& log) {
  struct stat status {};
  return S_ISREG(log.status.st_mode) && fstat(descriptor, &status) == 0 &&
         files::isSameFile(status, log.status);
}

bool isOnProc(const fs::path& directory) {
  struct statfs system {};
  return statfs(directory.c_str(), &system) == 0 && system.f_type == PROC_SUPER_MAGIC;
}

// The path without symbolic links in its end, even without those that lead to no file yet. Links of
// /proc stay: they stand for open files, not for the names that they show.
fs::path followLinks(fs::path path) {
  std::error_code error;
  for (int i = 0; i < kMaxLinks && fs::is_symlink(fs::symlink_status(path, error)) &&
                  !isOnProc(files::directoryOf(path));
       ++i) {
    path = path.parent_path() / fs::read_symlink(path, error);
  }
  return path;
}

// The number of the descriptor that a path like /dev/fd/3, links followed, means; none for others.
std::optional<int> descriptorOf(const std::string& name, const fs::path& path) {
  std::error_code error;
  const fs::path directory = fs::canonical(files::directoryOf(path), error);
  if (error || directory != "/proc/" + std::to_string(getpid()) + "/fd") {
    return std::nullopt;
  }
  const std::string text = path.filename();
  int number = 0;
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (problem != std::errc() || end != text.data() + text.size()) {
    throw files::FileError(name, "names no open file; give the number of one, as in /dev/fd/3");
  }
  return number;
}

// Standard streams that were closed look the same; writing to them says so.
void checkWritable(const std::string& name, int descriptor) {
  const int flags = fcntl(descriptor, F_GETFL);
  if (descriptor > STDERR_FILENO && flags != -1 && (flags & O_ACCMODE) == O_RDONLY) {
    throw files::FileError(name, "is open for reading only; open it for writing (3>FILE)");
  }
}

// A file that the shell opened: replacing it would pull it away from the shell and from what others
// write there.
std::optional<int> standardStreamTo(const struct stat& file) {
  for (const int descriptor : {STDOUT_FILENO, STDERR_FILENO}) {
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && files::isSameFile(status, file)) {
      return descriptor;
    }
  }
  return std::nullopt;
}

// Appending matters for a file that another process holds open, which has no other name to go by.
files::FileDescriptor openStream(const std::string& name) {
  files::FileDescriptor stream(open(name.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOCTTY));
  if (!stream.isOpen()) {
    throw files::FileError(name, files::explain(errno));
  }
  return stream;
}

files::FileDescriptor findStream(const std::string& name, const fs::path& path,
                                 const struct stat& found) {
  std::error_code error;
  if (!S_ISREG(found.st_mode) || fs::is_symlink(fs::symlink_status(path, error))) {
    return openStream(name);
  }
  const auto descriptor = standardStreamTo(found);
  return descriptor ? files::duplicate({*descriptor, name}) : files::FileDescriptor();
}

void checkReplaceable(const std::string& name, const struct stat& found, const LogFile& log) {
  if (files::isSameFile(found, log.status)) {
    throw files::FileError(name, kIsTheLog);
  }
  if (faccessat(AT_FDCWD, name.c_str(), W_OK, AT_EACCESS) != 0) {
    throw files::FileError(name, files::explain(errno));
  }
}

OutputDestination resolve(const std::string& name, const LogFile& log) {
  if (name == files::kStandardStreamPath) {
    return {files::kStandardOutputName,
            files::duplicate({STDOUT_FILENO, files::kStandardOutputName}),
            {},
            {}};
  }
  const fs::path path = followLinks(name);
  if (const auto descriptor = descriptorOf(name, path)) {
    checkWritable(name, *descriptor);
    return {name, files::duplicate({*descriptor, name}), {}, {}};
  }
  struct stat found {};
  if (stat(name.c_str(), &found) != 0) {
    if (errno != ENOENT) {
      throw files::FileError(name, files::explain(errno));
    }
    return {name, files::FileDescriptor(), path, {}};
  }
  if (S_ISDIR(found.st_mode)) {
    throw files::FileError(name, files::explain(EISDIR));
  }
  files::FileDescriptor stream = findStream(name, path, found);
  if (stream.isOpen()) {
    return {name, std::move(stream), {}, {}};
  }
  checkReplaceable(name, found, log);
  return {name, files::FileDescriptor(), path, found};
}

}  // namespace

OutputDestination findDestination(const std::string& name, const LogFile& log) {
  OutputDestination destination = resolve(name, log);
  if (isLog(destination.stream.get(), log)) {
    throw files::FileError(destination.name, kIsTheLog);
  }
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
