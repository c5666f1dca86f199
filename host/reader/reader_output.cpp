#include "host/reader/reader_output.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <iostream>
#include <string_view>

#include "files/file_error.h"
#include "files/standard_streams.h"
#include "host/output/mapped_file.h"
#include "host/output/scratch_directory.h"
#include "host/output/terminal_text.h"

namespace vyn::host {
namespace {

constexpr std::size_t kTailSize = 4096;  // bytes; the logger's longest line has 1023

// Where no file can be made without a name, memory holds the text.
files::FileDescriptor makeTextFile() {
  constexpr mode_t kOwnerOnly = 0600;
  files::FileDescriptor file(
      open(scratchDirectory().c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kOwnerOnly));
  if (!file.isOpen()) {
    file = files::FileDescriptor(memfd_create("reader output", MFD_CLOEXEC));
  }
  if (!file.isOpen()) {
    throw files::FileError("what the reader prints", files::explain(errno));
  }
  return file;
}

// Throws with the reason that a write to the file fails for.
[[noreturn]] void throwCutShort(const files::NamedFile& text) {
  errno = 0;
  const ssize_t count = pwrite(text.descriptor, "", 1, static_cast<off_t>(files::sizeOf(text)));
  throw files::FileError(scratchDirectory(), count < 0
                                                 ? files::explain(errno)
                                                 : "what the reader printed could not be kept "
                                                   "whole; check the disk");
}

// "     0.1ms [ ERROR ] text" becomes "text".
std::string_view withoutLogPrefix(std::string_view line) {
  constexpr std::string_view kBeforeSeverity = "ms [";
  constexpr std::string_view kAfterSeverity = "] ";
  const std::size_t time = line.find_first_not_of(" 0123456789.");
  if (time == std::string_view::npos ||
      line.substr(time, kBeforeSeverity.size()) != kBeforeSeverity) {
    return line;
  }
  const std::size_t severity = line.find(kAfterSeverity, time);
  return severity == std::string_view::npos ? line : line.substr(severity + kAfterSeverity.size());
}

constexpr std::string_view kUnwritten = "Invalid output fileName: [";

// The name of the file when the reader's logger printed the words at `place`, and not a summary.
std::optional<std::string> nameOfUnwritten(std::string_view text, std::size_t place) {
  constexpr std::size_t kLongestPrefix = 64;  // bytes
  const std::size_t window = place - std::min(place, kLongestPrefix);
  const std::size_t lineFeed = text.substr(window, place - window).rfind('\n');
  if (lineFeed == std::string_view::npos && window > 0) {
    return std::nullopt;
  }
  const std::size_t start = lineFeed == std::string_view::npos ? 0 : window + lineFeed + 1;
  const std::string_view line = text.substr(start, text.find('\n', place) - start);
  const std::string_view message = withoutLogPrefix(line);
  if (message.size() == line.size() || !message.starts_with(kUnwritten)) {
    return std::nullopt;
  }
  const std::string_view name = message.substr(kUnwritten.size());
  return std::string(name.substr(0, name.rfind(']')));
}

}  // namespace

ReaderOutput::ReaderOutput()
    : m_standardOutput(files::duplicate({STDOUT_FILENO, files::kStandardOutputName})),
      m_text(makeTextFile()) {
  files::flushStandardOutput();
  dup2(m_text.get(), STDOUT_FILENO);
}

ReaderOutput::~ReaderOutput() { end(); }

std::string ReaderOutput::lastLine() const {
  files::flushStandardOutput();
  const std::string tail = files::tailOf({m_text.get(), files::kStandardOutputName}, kTailSize);
  const std::size_t end = tail.find_last_not_of('\n');
  if (end == std::string::npos) {
    return {};
  }
  const std::size_t start = tail.rfind('\n', end) + 1;  // 0 when there is no line before it
  return std::string(withoutLogPrefix(std::string_view(tail).substr(start, end + 1 - start)));
}

std::optional<std::string> ReaderOutput::unwrittenPayload() const {
  const MappedFile printed({m_text.get(), files::kStandardOutputName});
  const std::string_view text = printed.text();
  for (std::size_t place = text.find(kUnwritten); place != std::string_view::npos;
       place = text.find(kUnwritten, place + 1)) {
    if (auto name = nameOfUnwritten(text, place)) {
      return name;
    }
  }
  return std::nullopt;
}

std::uint64_t ReaderOutput::size() const {
  return files::sizeOf({m_text.get(), files::kStandardOutputName});
}

void ReaderOutput::passOn() {
  end();
  if (!std::cout.good() || std::ferror(stdout) != 0) {
    throwCutShort({m_text.get(), files::kStandardOutputName});
  }
  const MappedFile printed({m_text.get(), files::kStandardOutputName});
  writeForeignText({STDOUT_FILENO, files::kStandardOutputName}, printed.text());
}

void ReaderOutput::passToStandardError() {
  end();
  const std::string name = "standard error";
  try {
    writeForeignText({STDERR_FILENO, name}, MappedFile({m_text.get(), name}).text());
  } catch (const files::FileError&) {
    return;
  }
}

void ReaderOutput::end() {
  if (m_standardOutput.isOpen()) {
    files::flushStandardOutput();
    dup2(m_standardOutput.get(), STDOUT_FILENO);
    m_standardOutput.close();
  }
}

}  // namespace vyn::host
