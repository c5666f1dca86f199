#include "host/output/file_append.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <thread>
#include <utility>

#include "files/file_descriptor.h"
#include "files/file_error.h"
#include "files/interruption.h"
#include "host/report_line.h"

namespace vyn::host {
namespace {

using Clock = std::chrono::steady_clock;

constexpr mode_t kNewFileMode = 0666;  // less what the user's umask takes away

// Waiting for a file that others have locked.
class Patience {
 public:
  explicit Patience(const std::string& name) : m_name(name) {}

  // Throws FileError when it has ended.
  void wait() {
    const auto waited = Clock::now() - m_start;
    if (waited > kEnd) {
      throw files::FileError(m_name,
                             "another program keeps it locked; end that or give another --output");
    }
    if (!m_isSaid && waited > kSilence) {
      reportLine(m_name + ": waits for another program that has it locked");
      m_isSaid = true;
    }
    std::this_thread::sleep_for(kStep);
  }

 private:
  static constexpr std::chrono::milliseconds kStep{5};
  static constexpr std::chrono::seconds kSilence{2};
  static constexpr std::chrono::seconds kEnd{30};

  const std::string& m_name;
  Clock::time_point m_start = Clock::now();
  bool m_isSaid = false;
};

struct OpenedFile {
  files::FileDescriptor descriptor;
  bool isNew;
};

// Not open when the file comes and goes meanwhile.
OpenedFile openEnd(const std::string& path, const std::string& name) {
  constexpr int kFlags = O_WRONLY | O_APPEND | O_CLOEXEC | O_NOCTTY;
  files::FileDescriptor there(open(path.c_str(), kFlags));
  if (there.isOpen()) {
    return {std::move(there), false};
  }
  if (errno != ENOENT) {
    throw files::FileError(name, files::explain(errno));
  }
  files::FileDescriptor made(open(path.c_str(), kFlags | O_CREAT | O_EXCL, kNewFileMode));
  if (!made.isOpen() && errno != EEXIST) {
    throw files::FileError(name, files::explain(errno));
  }
  return {std::move(made), true};
}

// True also where the file system has no locks.
bool tryLock(int descriptor) {
  return flock(descriptor, LOCK_EX | LOCK_NB) == 0 || (errno != EWOULDBLOCK && errno != EINTR);
}

bool isStillAt(const std::string& path, int descriptor) {
  struct stat opened {};
  struct stat found {};
  return fstat(descriptor, &opened) == 0 && stat(path.c_str(), &found) == 0 &&
         files::isSameFile(opened, found);
}

// Of a file that may not be read, a line feed.
char lastByte(const files::NamedFile& file, std::uint64_t size) {
  const std::string path = "/proc/self/fd/" + std::to_string(file.descriptor);
  const files::FileDescriptor readable(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  char last = '\n';
  const bool isRead =
      size > 0 && pread(readable.get(), &last, 1, static_cast<off_t>(size - 1)) == 1;
  return isRead ? last : '\n';
}

// A line that grows is being written by a program that takes no lock.
bool endsInsideALine(const files::NamedFile& file) {
  constexpr std::chrono::milliseconds kWritesLast(100);
  for (std::uint64_t size = files::sizeOf(file); lastByte(file, size) != '\n';) {
    std::this_thread::sleep_for(kWritesLast);
    const std::uint64_t before = std::exchange(size, files::sizeOf(file));
    if (size == before) {
      return true;
    }
  }
  return false;
}

// A text that is being added to a file.
class Addition {
 public:
  explicit Addition(files::NamedFile file) : m_file(std::move(file)) {}

  // Returns 0 or the error number.
  int run(std::string_view text) {
    const bool needsLineFeed = endsInsideALine(m_file);
    m_before = files::sizeOf(m_file);
    int error = needsLineFeed ? write("\n") : 0;
    error = error == 0 ? write(text) : error;
    return error == 0 && fsync(m_file.descriptor) != 0 ? errno : error;
  }

  // Unless others who take no lock have added something meanwhile. False when it stays.
  bool takeBack() const {
    return m_written == 0 || (files::sizeOf(m_file) == m_before + m_written &&
                              ftruncate(m_file.descriptor, static_cast<off_t>(m_before)) == 0);
  }

  bool isFileEmpty() const { return files::sizeOf(m_file) == 0; }

 private:
  // In as few calls as the system allows, for others may add to the file between two.
  int write(std::string_view text) {
    while (!text.empty()) {
      const ssize_t count = ::write(m_file.descriptor, text.data(), text.size());
      if (count < 0 && errno != EINTR) {
        return errno;
      }
      const auto size = count < 0 ? 0 : static_cast<std::size_t>(count);
      text.remove_prefix(size);
      m_written += size;
    }
    return 0;
  }

  files::NamedFile m_file;
  std::uint64_t m_before = 0;
  std::uint64_t m_written = 0;
};

void append(const OpenedFile& file, const std::string& path, const std::string& name,
            std::string_view text) {
  Addition addition({file.descriptor.get(), name});
  const int error = addition.run(text);
  if (error == 0) {
    return;
  }
  const bool isTakenBack = addition.takeBack();
  if (file.isNew && addition.isFileEmpty()) {
    unlink(path.c_str());
  }
  throw files::FileError(
      name, files::explain(error) +
                (isTakenBack ? "" : "; what was added until then could not be removed"));
}

}  // namespace

void appendToFile(const std::filesystem::path& path, const std::string& name,
                  std::string_view text) {
  for (Patience patience(name);; patience.wait()) {
    const files::SignalDelay delay;
    const OpenedFile file = openEnd(path, name);
    const int descriptor = file.descriptor.get();
    if (file.descriptor.isOpen() && tryLock(descriptor) && isStillAt(path, descriptor)) {
      append(file, path, name, text);
      return;
    }
  }
}

}  // namespace vyn::host
