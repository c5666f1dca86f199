#include "temp_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "host_error.h"

namespace vyn::host {
namespace {

constexpr std::size_t kMaxNamePart = 240;  // bytes of the name; leaves room within 255 for the rest

}  // namespace

TempFile::TempFile(const std::filesystem::path& directory, const std::string& name,
                   std::string subject)
    : m_subject(std::move(subject)),
      m_path(directory / ("." + name.substr(0, kMaxNamePart) + ".XXXXXX")) {
  const SignalDelay delay;
  m_descriptor = FileDescriptor(mkostemp(m_path.data(), O_CLOEXEC));
  if (!m_descriptor.isOpen()) {
    throw HostError(m_subject, errno == ENOENT
                                   ? "its directory does not exist; make it or choose another"
                                   : explain(errno));
  }
  m_removal.emplace(m_path);
}

TempFile::~TempFile() {
  if (!m_path.empty()) {
    unlink(m_path.c_str());
  }
}

void TempFile::moveTo(const std::filesystem::path& target) {
  if (const int error = m_descriptor.close(); error != 0) {
    throw HostError(m_subject, explain(error));
  }
  const SignalDelay delay;
  if (std::rename(m_path.c_str(), target.c_str()) != 0) {
    throw HostError(m_subject, explain(errno));
  }
  m_path.clear();
  m_removal.reset();
}

}  // namespace vyn::host
