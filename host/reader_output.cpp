#include "reader_output.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <iostream>
#include <string_view>

#include "host_error.h"
#include "scratch_directory.h"
#include "standard_streams.h"

namespace vyn::host {
namespace {

constexpr char kStandardOutputName[] = "standard output";
constexpr std::size_t kTailSize = 4096;  // bytes; the logger's longest line has 1023

// Where no file can be made without a name, memory holds the text.
FileDescriptor makeTextFile() {
  constexpr mode_t kOwnerOnly = 0600;
  FileDescriptor file(open(scratchDirectory().c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kOwnerOnly));
  if (!file.isOpen()) {
    file = FileDescriptor(memfd_create("reader output", MFD_CLOEXEC));
  }
  if (!file.isOpen()) {
    throw HostError("what the reader prints", explain(errno));
  }
  return file;
}

off_t sizeOf(const FileDescriptor& file) {
  struct stat status {};
  return fstat(file.get(), &status) == 0 ? status.st_size : 0;
}

// Throws with the reason that a write to the file fails for.
[[noreturn]] void throwCutShort(const FileDescriptor& file) {
  errno = 0;
  const ssize_t count = pwrite(file.get(), "", 1, sizeOf(file));
  throw HostError(scratchDirectory(), count < 0 ? explain(errno)
                                                : "what the reader printed could not be kept "
                                                  "whole; check the disk");
}

std::string tailOf(const FileDescriptor& file) {
  std::string tail(kTailSize, '\0');
  const off_t start = std::max<off_t>(0, sizeOf(file) - static_cast<off_t>(kTailSize));
  const ssize_t count = pread(file.get(), tail.data(), tail.size(), start);
  tail.resize(static_cast<std::size_t>(std::max<ssize_t>(0, count)));
  return tail;
}

// "     0.1ms [ ERROR ] text" becomes "text".
std::string_view withoutLogPrefix(std::string_view line) {
  constexpr std::string_view kBeforeLevel = "ms [";
  constexpr std::string_view kAfterLevel = "] ";
  const std::size_t time = line.find_first_not_of(" 0123456789.");
  if (time == std::string_view::npos || line.substr(time, kBeforeLevel.size()) != kBeforeLevel) {
    return line;
  }
  const std::size_t level = line.find(kAfterLevel, time);
  return level == std::string_view::npos ? line : line.substr(level + kAfterLevel.size());
}

}  // namespace

ReaderOutput::ReaderOutput() : m_standardOutput(duplicateStandardOutput()), m_text(makeTextFile()) {
  flushStandardOutput();
  dup2(m_text.get(), STDOUT_FILENO);
}

ReaderOutput::~ReaderOutput() { stop(); }

std::string ReaderOutput::lastLine() const {
  flushStandardOutput();
  const std::string tail = tailOf(m_text);
  const std::size_t end = tail.find_last_not_of('\n');
  if (end == std::string::npos) {
    return {};
  }
  const std::size_t start = tail.rfind('\n', end) + 1;  // 0 when there is no line before it
  return std::string(withoutLogPrefix(std::string_view(tail).substr(start, end + 1 - start)));
}

void ReaderOutput::passOn() {
  stop();
  if (!std::cout.good() || std::ferror(stdout) != 0) {
    throwCutShort(m_text);
  }
  const std::string name = kStandardOutputName;
  copyFile({m_text.get(), name}, {STDOUT_FILENO, name});
}

void ReaderOutput::passToStandardError() {
  stop();
  const std::string name = "standard error";
  try {
    copyFile({m_text.get(), name}, {STDERR_FILENO, name});
  } catch (const HostError&) {
    return;
  }
}

void ReaderOutput::stop() {
  if (m_standardOutput.isOpen()) {
    flushStandardOutput();
    dup2(m_standardOutput.get(), STDOUT_FILENO);
    m_standardOutput.close();
  }
}

}  // namespace vyn::host
