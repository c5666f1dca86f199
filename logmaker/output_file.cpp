#include "logmaker/output_file.h"

#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "host/host_error.h"
#include "host/standard_streams.h"

namespace vyn::logmaker {
namespace fs = std::filesystem;

OutputFile::OutputFile(const std::string& name)
    : m_name(name == "-" ? host::kStandardOutputName : name) {
  if (name == "-") {
    m_file = stdout;
    return;
  }
  std::error_code ignored;
  const fs::file_status status = fs::status(name, ignored);
  if (fs::is_directory(status)) {
    fail(EISDIR);
  }
  // A link keeps pointing at the file that it names.
  m_target = fs::is_regular_file(status) ? fs::canonical(name) : fs::path(name);
  if (fs::is_regular_file(status) || !fs::exists(status)) {
    m_partial = m_target;
    m_partial += "." + std::to_string(getpid()) + ".part";
    m_removal.emplace(m_partial);
  }
  m_file = std::fopen((m_partial.empty() ? m_target : m_partial).c_str(), "wb");
  if (m_file == nullptr) {
    fail(errno);
  }
}

OutputFile::~OutputFile() {
  if (m_file != nullptr && m_file != stdout) {
    std::fclose(m_file);
  }
  if (!m_partial.empty()) {
    std::error_code ignored;
    fs::remove(m_partial, ignored);
  }
}

void OutputFile::expect(std::uint64_t size) const {
  struct statvfs system {};
  if (m_partial.empty() || fstatvfs(fileno(m_file), &system) != 0 || system.f_blocks == 0) {
    return;
  }
  if (const std::uint64_t free = system.f_bavail * system.f_frsize; size > free) {
    throw host::HostError(m_name, "is to have " + std::to_string(size) + " bytes, and " +
                                      std::to_string(free) +
                                      " are free; free some space or choose another place");
  }
}

void OutputFile::refuseTerminal() const {
  if (isatty(fileno(m_file)) != 0) {
    throw host::HostError(
        m_name, "is a terminal, which cannot show a log; name a file or pass it to a program");
  }
}

void OutputFile::write(const void* data, std::size_t size) {
  if (std::fwrite(data, 1, size, m_file) != size) {
    fail(errno);
  }
}

void OutputFile::close() {
  std::FILE* const file = m_file;
  m_file = nullptr;
  if (std::fclose(file) != 0) {
    fail(errno);
  }
}

void OutputFile::publish() {
  if (m_partial.empty()) {
    return;
  }
  std::error_code error;
  fs::rename(m_partial, m_target, error);
  if (error) {
    fail(error.value());
  }
  m_partial.clear();
  m_removal.reset();
}

void OutputFile::fail(int errorNumber) const {
  if (errorNumber == EPIPE) {
    throw host::ClosedPipe(m_name, host::explain(errorNumber));
  }
  throw host::HostError(m_name, host::explain(errorNumber));
}

}  // namespace vyn::logmaker
