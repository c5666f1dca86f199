#include "host/input/log_reading.h"

#include <new>
#include <stdexcept>

#include "files/file_error.h"

namespace vyn::host {

profiling::WalkResult walkLogFile(const LogFile& log, profiling::MessageSink& sink,
                                  Progress progress) {
  WatchedFile file(log, progress);
  try {
    const profiling::WalkResult walk = profiling::walkLog(file, sink);
    checkStillWhole(log);
    return walk;
  } catch (const std::bad_alloc&) {
    throw files::FileError(log.name, kNotEnoughMemory);
  } catch (const std::length_error&) {
    throw files::FileError(log.name, kNotEnoughMemory);
  }
}

}  // namespace vyn::host
