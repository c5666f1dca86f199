#include "host/output/output_target.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "files/file_error.h"
#include "host/output/file_append.h"
#include "host/output/mapped_file.h"
#include "host/output/scratch_directory.h"
#include "host/output/terminal_text.h"
#include "host/report_line.h"

namespace vyn::host {
namespace {

namespace fs = std::filesystem;

// A file may be added to in a directory where none can be made.
bool isMadeElsewhere(const files::Destination& destination, OutputTarget::Content content) {
  return destination.stream.isOpen() ||
         (content == OutputTarget::Content::kAppended && destination.found &&
          faccessat(AT_FDCWD, files::directoryOf(destination.file).c_str(), W_OK | X_OK,
                    AT_EACCESS) != 0);
}

files::TempFile makeTempFile(const files::Destination& destination, OutputTarget::Content content) {
  if (isMadeElsewhere(destination, content)) {
    const fs::path directory = scratchDirectory();
    std::error_code error;
    if (!fs::is_directory(directory, error)) {
      throw files::FileError(directory,
                             "is no directory, though TMPDIR names it; set TMPDIR to one");
    }
    return {directory, kProgramName, directory};
  }
  return {files::directoryOf(destination.file), destination.file.filename(), destination.name};
}

}  // namespace

OutputTarget::OutputTarget(files::Destination destination, Content content,
                           files::TempFile::Existing existing)
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
         files::isSameFile(own, standard);
}

// Whatever is there now: another run may have put it there since the name was looked up.
void OutputTarget::copyFoundFile(const files::TempFile& copy) const {
  const files::FileDescriptor found(open(m_destination.file.c_str(), O_RDONLY | O_CLOEXEC));
  if (found.isOpen()) {
    files::readFrom({found.get(), name()}, 0,
                    [&copy](std::string_view bytes) { files::writeAll(copy.file(), bytes); });
  } else if (errno != ENOENT) {
    throw files::FileError(name(), files::explain(errno));
  }
}

void OutputTarget::deliverToStream() {
  const files::NamedFile stream{m_destination.stream.get(), name()};
  const MappedFile written(m_workFile.file());
  if (m_content == Content::kReplaced) {
    files::writeAll(stream, written.text());
  } else {
    writeForeignText(stream, written.text());
  }
  if (const int error = m_destination.stream.close(); error != 0) {
    throw files::FileError(name(), files::explain(error));
  }
}

void OutputTarget::deliver() {
  if (isStream()) {
    deliverToStream();
  } else if (m_content == Content::kAppended) {
    appendToFile(m_destination.file, name(), MappedFile(m_workFile.file()).text());
  } else {
    m_workFile.finish(m_destination.file);
    m_workFile.moveTo(m_destination.file, m_existing);
  }
}

}  // namespace vyn::host
