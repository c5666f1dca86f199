#include "logmaker/output_file.h"

#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace vyn::logmaker {
namespace fs = std::filesystem;
namespace {

constexpr char kMakeRoom[] = "free some space or write to another place";

}  // namespace

OutputFile::OutputFile(const std::string& name) : m_name(name == "-" ? "standard output" : name) {
  if (name == "-") {
    m_file = stdout;
    return;
  }
  std::error_code ignored;
  const fs::file_status status = fs::status(name, ignored);
  if (fs::is_directory(status)) {
    fail(EISDIR, "name a file in it instead");
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
    fail(errno, "check that its directory exists and that you may write there");
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
    throw OutputError("cannot write " + m_name + ": it is to have " + std::to_string(size) +
                      " bytes, and " + std::to_string(free) + " are free; " + kMakeRoom);
  }
}

void OutputFile::write(const void* data, std::size_t size) {
  if (std::fwrite(data, 1, size, m_file) != size) {
    failToWrite();
  }
}

void OutputFile::close() {
  std::FILE* const file = m_file;
  m_file = nullptr;
  if (std::fclose(file) != 0) {
    failToWrite();
  }
}

void OutputFile::publish() {
  if (m_partial.empty()) {
    return;
  }
  std::error_code error;
  fs::rename(m_partial, m_target, error);
  if (error) {
    fail(error.value(), "check that you may write there");
  }
  m_partial.clear();
  m_removal.reset();
}

void OutputFile::fail(int errorNumber, const std::string& advice) const {
  throw OutputError("cannot write " + m_name + ": " + std::generic_category().message(errorNumber) +
                    "; " + advice);
}

void OutputFile::failToWrite() const { fail(errno, kMakeRoom); }

}  // namespace vyn::logmaker
