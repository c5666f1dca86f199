#include "host/input/log_salvage.h"

#include <sys/stat.h>

#include <new>
#include <stdexcept>
#include <vector>

#include "files/file_error.h"
#include "files/temp_file.h"
#include "host/input/log_diagnosis.h"
#include "host/output/scratch_directory.h"
#include "host/report_line.h"

namespace vyn::host {
namespace {

// All that a pipe gives, where it can be read again.
class PipeCopy {
 public:
  PipeCopy(const LogFile& pipe, Progress progress)
      : m_file(scratchDirectory(), kProgramName, scratchDirectory()) {
    WatchedFile source(pipe, progress);
    std::vector<char> block(kBlockSize);
    while (const std::size_t count =
               source.read(reinterpret_cast<std::uint8_t*>(block.data()), block.size())) {
      files::writeAll(m_file.file(), {block.data(), count});
    }
    if (source.hasFailed()) {
      throw files::FileError(pipe.name, kCannotBeRead);
    }
    m_log = {m_file.path(), {}, pipe.name};
    fstat(m_file.file().descriptor, &m_log.status);
  }

  const LogFile& log() const { return m_log; }

 private:
  static constexpr std::size_t kBlockSize = std::size_t{1} << 18;  // bytes

  files::TempFile m_file;
  LogFile m_log;
};

void salvage(const LogFile& log, profiling::MessageSink& sink, LossReport& losses,
             const profiling::SalvageOptions& options, Progress progress) {
  WatchedFile file(log, progress);
  const auto lost = [&losses](const profiling::LostRange& range) { losses.add(range); };
  if (profiling::salvageLog(file, sink, lost, options) == profiling::WalkEnd::kReadError) {
    throw files::FileError(log.name, kCannotBeRead);
  }
  checkStillWhole(log);
}

}  // namespace

void salvageLogFile(const LogFile& log, profiling::MessageSink& sink, LossReport& losses,
                    const profiling::SalvageOptions& options, Progress progress) {
  try {
    if (options.search && !log.canBeReadAgain()) {
      salvage(PipeCopy(log, progress).log(), sink, losses, options, progress);
    } else {
      salvage(log, sink, losses, options, progress);
    }
  } catch (const std::bad_alloc&) {
    throw files::FileError(log.name, kNotEnoughMemory);
  } catch (const std::length_error&) {
    throw files::FileError(log.name, kNotEnoughMemory);
  }
}

}  // namespace vyn::host
