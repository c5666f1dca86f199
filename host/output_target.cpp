#include "output_target.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "file_append.h"
#include "host_error.h"
#include "mapped_file.h"
#include "scratch_directory.h"
#include "terminal_text.h"

namespace vyn::host {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kPermissions = 0777;
constexpr mode_t kNewFileMode = 0666;  // less what the user's umask takes away

// A file may be added to in a directory where none can be made.
bool isMadeElsewhere(const OutputDestination& destination, OutputTarget::Content content) {
  return destination.stream.isOpen() ||
         (content == OutputTarget::Content::kAppended && destination.found &&
          faccessat(AT_FDCWD, directoryOf(destination.file).c_str(), W_OK | X_OK, AT_EACCESS) != 0);
}

TempFile makeTempFile(const OutputDestination& destination, OutputTarget::Content content) {
  if (isMadeElsewhere(destination, content)) {
    const fs::path directory = scratchDirectory();
    std::error_code error;
    if (!fs::is_directory(directory, error)) {
      throw HostError(directory, "is no directory, though TMPDIR names it; set TMPDIR to one");
    }
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
      m_workFile(makeTempFile(m_destination, content)) {
  if (!isStream() && m_content == Content::kContinued) {
    copyFoundFile(m_workFile);
  }
}

bool OutputTarget::isStandardOutput() const {
  struct stat own {};
  struct stat standard {};
  return fstat(m_destination.stream.get(), &own) == 0 && fstat(STDOUT_FILENO, &standard) == 0 &&
         isSameFile(own, standard);
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

void OutputTarget::deliverToStream() {
  const NamedFile stream{m_destination.stream.get(), name()};
  const MappedFile written(m_workFile.file());
  if (m_content == Content::kReplaced) {
    writeAll(stream, written.text().data(), written.text().size());
  } else {
    writeForeignText(stream, written.text());
  }
  if (const int error = m_destination.stream.close(); error != 0) {
    throw HostError(name(), explain(error));
  }
}

void OutputTarget::deliver() {
  if (isStream()) {
    deliverToStream();
  } else if (m_content == Content::kAppended) {
    appendToFile(m_destination.file, name(), MappedFile(m_workFile.file()).text());
  } else {
    moveIntoPlace(m_workFile);
  }
}

}  // namespace vyn::host
