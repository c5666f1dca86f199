#include "output_target.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "host_error.h"
#include "scratch_directory.h"
#include "standard_streams.h"

namespace vyn::host {
namespace {

namespace fs = std::filesystem;

constexpr char kStandardOutputName[] = "standard output";
constexpr mode_t kPermissions = 0777;
constexpr mode_t kNewFileMode = 0666;  // less what the user's umask takes away
constexpr int kMaxLinks = 40;          // as many as the kernel follows

bool isSameFile(const struct stat& left, const struct stat& right) {
  return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

// A name like /dev/stdout for a file that the shell opened: replacing it would pull it away from
// the shell and from what others write there.
bool isStandardOutput(const struct stat& status) {
  struct stat standardOutput {};
  return fstat(STDOUT_FILENO, &standardOutput) == 0 && isSameFile(status, standardOutput);
}

// The file behind symbolic links, even behind those that lead to no file yet.
fs::path followLinks(fs::path path) {
  std::error_code error;
  for (int i = 0; i < kMaxLinks && fs::is_symlink(fs::symlink_status(path, error)); ++i) {
    path = path.parent_path() / fs::read_symlink(path, error);
  }
  return path;
}

fs::path directoryOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

FileDescriptor openStream(const std::string& name) {
  FileDescriptor stream(open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
  if (!stream.isOpen()) {
    throw HostError(name, explain(errno));
  }
  return stream;
}

void checkReplaceable(const std::string& name, const struct stat& found, const LogFile& log) {
  if (isSameFile(found, log.status)) {
    throw HostError(name, "is the log itself; give another name for the output");
  }
  if (faccessat(AT_FDCWD, name.c_str(), W_OK, AT_EACCESS) != 0) {
    throw HostError(name, explain(errno));
  }
}

mode_t newFileMode() {
  const mode_t mask = umask(0);
  umask(mask);
  return kNewFileMode & ~mask;
}

}  // namespace

OutputTarget::OutputTarget(const std::string& name, const LogFile& log, Content content)
    : m_destination(resolve(name, log)), m_workFile(makeWorkFile(m_destination)) {
  if (content == Content::kContinued && m_destination.found) {
    copyFoundFile();
  }
}

OutputTarget::Destination OutputTarget::resolve(const std::string& name, const LogFile& log) {
  if (name == "-") {
    return {kStandardOutputName, duplicateStandardOutput(), {}, {}};
  }
  struct stat found {};
  if (stat(name.c_str(), &found) != 0) {
    if (errno != ENOENT) {
      throw HostError(name, explain(errno));
    }
    return {name, FileDescriptor(), followLinks(name), {}};
  }
  if (S_ISDIR(found.st_mode)) {
    throw HostError(name, explain(EISDIR));
  }
  if (isStandardOutput(found)) {
    return {name, duplicateStandardOutput(), {}, {}};
  }
  if (!S_ISREG(found.st_mode)) {
    return {name, openStream(name), {}, {}};
  }
  checkReplaceable(name, found, log);
  return {name, FileDescriptor(), followLinks(name), found};
}

TempFile OutputTarget::makeWorkFile(const Destination& destination) {
  if (destination.stream.isOpen()) {
    const fs::path directory = scratchDirectory();
    return {directory, "vyn-profile-viewer", directory};
  }
  return {directoryOf(destination.file), destination.file.filename(), destination.name};
}

void OutputTarget::copyFoundFile() {
  const FileDescriptor found(open(m_destination.file.c_str(), O_RDONLY | O_CLOEXEC));
  if (!found.isOpen()) {
    throw HostError(name(), explain(errno));
  }
  copyFile({found.get(), name()}, m_workFile.file());
}

// The user may be another one than the file's owner; then the owner changes, as with a new file.
void OutputTarget::adoptMode() {
  const int descriptor = m_workFile.file().descriptor;
  mode_t mode = newFileMode();
  if (m_destination.found) {
    mode = m_destination.found->st_mode & kPermissions;
    [[maybe_unused]] const int kept =
        fchown(descriptor, m_destination.found->st_uid, m_destination.found->st_gid);
  }
  if (fchmod(descriptor, mode) != 0) {
    throw HostError(name(), explain(errno));
  }
}

void OutputTarget::deliver() {
  if (!isStream()) {
    adoptMode();
    m_workFile.moveTo(m_destination.file);
    return;
  }
  copyFile(m_workFile.file(), {m_destination.stream.get(), name()});
  if (const int error = m_destination.stream.close(); error != 0) {
    throw HostError(name(), explain(error));
  }
}

}  // namespace vyn::host
