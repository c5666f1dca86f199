#include "console_capture.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>

#include "host_error.h"
#include "standard_streams.h"

namespace vyn::host {

ConsoleCapture::ConsoleCapture()
    : m_text(memfd_create("standard output", MFD_CLOEXEC)),
      m_standardOutput(duplicate({STDOUT_FILENO, kStandardOutputName})) {
  if (!m_text.isOpen()) {
    throw HostError(kStandardOutputName, explain(errno));
  }
  flushStandardOutput();
  dup2(m_text.get(), STDOUT_FILENO);
}

void ConsoleCapture::end() {
  if (!m_standardOutput.isOpen()) {
    return;
  }
  flushStandardOutput();
  dup2(m_standardOutput.get(), STDOUT_FILENO);
  m_standardOutput.close();
}

std::uint64_t ConsoleCapture::size() const { return sizeOf({m_text.get(), kStandardOutputName}); }

void ConsoleCapture::passOn() {
  copyFile({m_text.get(), kStandardOutputName}, {STDOUT_FILENO, kStandardOutputName});
  finishStandardOutput();  // tells whether the text was held back whole
}

}  // namespace vyn::host
