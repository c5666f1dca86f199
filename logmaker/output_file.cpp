#include "logmaker/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "files/file_error.h"
#include "files/standard_streams.h"

namespace vyn::logmaker {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMostWaiting = std::size_t{1} << 16;  // bytes

}  // namespace

OutputFile::OutputFile(const std::string& name)
    : m_name(name == files::kStandardStreamPath ? files::kStandardOutputName : name) {
  if (name == files::kStandardStreamPath) {
    m_stream = files::duplicate({STDOUT_FILENO, m_name});
  } else {
    open(name);
  }
}

void OutputFile::open(const std::string& name) {
  struct stat found {};
  const bool isThere = stat(name.c_str(), &found) == 0;
  if (!isThere && errno != ENOENT) {
    fail(errno);
  }
  if (isThere && S_ISDIR(found.st_mode)) {
    fail(EISDIR);
  }
  if (!isThere) {
    openBeside(name);
  } else if (S_ISREG(found.st_mode)) {
    openBeside(fs::canonical(name));  // a link keeps pointing at the file that it names
  } else {
    m_stream = files::FileDescriptor(::open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY));
    if (!m_stream.isOpen()) {
      fail(errno);
    }
  }
}

void OutputFile::openBeside(const fs::path& target) {
  const fs::path directory = files::directoryOf(target);
  if (access(directory.c_str(), F_OK) != 0) {
    fail(errno);
  }
  m_target = target;
  m_temp.emplace(directory, target.filename(), m_name);
}

void OutputFile::expect(std::uint64_t size) const {
  struct statvfs system {};
  if (!m_temp || fstatvfs(file().descriptor, &system) != 0 || system.f_blocks == 0) {
    return;
  }
  if (const std::uint64_t free = system.f_bavail * system.f_frsize; size > free) {
    throw files::FileError(m_name, "is to have " + std::to_string(size) + " bytes, and " +
                                       std::to_string(free) +
                                       " are free; free some space or choose another place");
  }
}

void OutputFile::refuseTerminal() const {
  if (isatty(file().descriptor) != 0) {
    throw files::FileError(
        m_name, "is a terminal, which cannot show a log; name a file or pass it to a program");
  }
}

void OutputFile::write(const void* data, std::size_t size) {
  const std::string_view bytes(static_cast<const char*>(data), size);
  if (m_waiting.size() + size > kMostWaiting) {
    flush();
  }
  if (size > kMostWaiting) {
    files::writeAll(file(), bytes);
  } else {
    m_waiting += bytes;
  }
}

void OutputFile::close() {
  flush();
  if (m_temp) {
    m_temp->finish(m_target);
  } else if (const int error = m_stream.close(); error != 0) {
    fail(error);
  }
}

void OutputFile::publish() {
  if (m_temp) {
    m_temp->moveTo(m_target, files::TempFile::Existing::kReplaced);
  }
}

files::NamedFile OutputFile::file() const {
  return m_temp ? m_temp->file() : files::NamedFile{m_stream.get(), m_name};
}

void OutputFile::flush() {
  files::writeAll(file(), m_waiting);
  m_waiting.clear();
}

void OutputFile::fail(int errorNumber) const {
  throw files::FileError(m_name, files::explain(errorNumber));
}

}  // namespace vyn::logmaker
