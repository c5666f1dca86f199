#include "output_target.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "host_error.h"
#include "scratch_directory.h"

namespace vyn::host {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kPermissions = 0777;
constexpr mode_t kNewFileMode = 0666;  // less what the user's umask takes away

TempFile makeTempFile(const OutputDestination& destination) {
  if (destination.stream.isOpen()) {
    const fs::path directory = scratchDirectory();
    return {directory, "vyn-profile-viewer", directory};
  }
  return {directoryOf(destination.file), destination.file.filename(), destination.name};
}

mode_t newFileMode() {
  const mode_t mask = umask(0);
  umask(mask);
  return kNewFileMode & ~mask;
}

// The user may be another one than the found file's owner; then the owner changes, as with a new
// file.
void adoptMode(const NamedFile& file, const OutputDestination& destination) {
  mode_t mode = newFileMode();
  struct stat found {};
  if (stat(destination.file.c_str(), &found) == 0) {
    mode = found.st_mode & kPermissions;
    [[maybe_unused]] const int kept = fchown(file.descriptor, found.st_uid, found.st_gid);
  }
  if (fchmod(file.descriptor, mode) != 0) {
    throw HostError(file.name, explain(errno));
  }
}

}  // namespace

OutputTarget::OutputTarget(OutputDestination destination, Content content,
                           TempFile::Existing existing)
    : m_destination(std::move(destination)),
      m_content(content),
      m_existing(existing),
      m_workFile(makeTempFile(m_destination)) {
  if (isStream() || m_content == Content::kReplaced) {
    return;
  }
  if (m_content == Content::kContinued) {
    m_lock.emplace(directoryOf(m_destination.file));
    copyFoundFile(m_workFile);
  } else if (m_destination.found && access(m_destination.file.c_str(), R_OK) != 0) {
    throw HostError(name(), explain(errno));
  }
}

// Whatever is there now: another run may have put it there since the name was looked up.
void OutputTarget::copyFoundFile(const TempFile& copy) const {
  const FileDescriptor found(open(m_destination.file.c_str(), O_RDONLY | O_CLOEXEC));
  if (found.isOpen()) {
    copyFile({found.get(), name()}, copy.file());
  } else if (errno != ENOENT) {
    throw HostError(name(), explain(errno));
  }
}

void OutputTarget::moveIntoPlace(TempFile& file) const {
  adoptMode(file.file(), m_destination);
  file.moveTo(m_destination.file, m_existing);
}

// The file is put together beside its place, so that a run that is killed leaves the old one.
void OutputTarget::deliverAppended() {
  const DirectoryLock lock(directoryOf(m_destination.file));
  TempFile whole = makeTempFile(m_destination);
  copyFoundFile(whole);
  copyFile(m_workFile.file(), whole.file());
  moveIntoPlace(whole);
}

void OutputTarget::deliver() {
  if (!isStream()) {
    m_content == Content::kAppended ? deliverAppended() : moveIntoPlace(m_workFile);
    return;
  }
  copyFile(m_workFile.file(), {m_destination.stream.get(), name()});
  if (const int error = m_destination.stream.close(); error != 0) {
    throw HostError(name(), explain(error));
  }
}

}  // namespace vyn::host
