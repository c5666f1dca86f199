#include "host/input/log_diagnosis.h"

#include <fcntl.h>

#include <cerrno>
#include <cstdint>

#include "base/counted.h"
#include "files/file_descriptor.h"
#include "files/file_error.h"
#include "files/standard_streams.h"
#include "host/input/foreign_format.h"
#include "host/input/shell_word.h"
#include "input/damage_text.h"
#include "input/log_walk.h"

namespace vyn::host {
namespace {

// The log as a command line names it.
std::string wordOf(const LogFile& log) {
  if (log.isStandardInput) {
    return files::kStandardStreamPath;
  }
  return shellWord(log.path.starts_with('-') ? "./" + log.path : log.path);
}

// The command that saves what is sound. What came through a pipe is gone.
std::string recovery(const LogFile& log) {
  return "vyn-profile-viewer recover " + (log.canBeReadAgain() ? wordOf(log) : "LOG") + " -o FILE";
}

// What hinders the system from opening the log, or any file where the log is gone when it is opened
// again; 0 when nothing does.
int errorOfOpening(const LogFile& log) {
  const std::string path = log.canBeReadAgain() ? log.path : "/dev/null";
  const files::FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  return file.isOpen() ? 0 : errno;
}

}  // namespace

std::string describeDamage(const LogFile& log, const profiling::WalkResult& walk,
                           Remedies remedies) {
  if (walk.end == profiling::WalkEnd::kReadError) {
    return kCannotBeRead;
  }
  if (walk.soundChunks == 0) {
    const auto format =
        log.canBeReadAgain() ? recogniseForeignFormat(log.path) : std::optional<std::string>();
    if (!format && walk.end == profiling::WalkEnd::kCutShort &&
        walk.last.announced < profiling::kLeastOfNoChunk) {
      return "not a profiling log, or one that ends inside its first chunk: " +
             std::to_string(walk.last.present) + " of " +
             profiling::counted(walk.last.announced, "byte") + " are there (" +
             profiling::kMayStillBeWritten +
             "); copy the log again, or give one that vyn-net-run wrote";
    }
    return format.value_or(
        "not a profiling log, or damaged from its first chunk on; give a log that vyn-net-run "
        "wrote, or look for sound chunks: " +
        recovery(log) + " --search");
  }
  const std::string offset = std::to_string(walk.soundBytes);
  const std::string chunks = std::to_string(walk.soundChunks);
  return "damaged after chunk " + chunks + " at byte offset " + offset +
         " (whole chunks before it: " + chunks + ", " +
         profiling::counted(walk.messages, "message") + "); " +
         (profiling::mayStillBeWritten(walk.end, walk.last)
              ? std::string(profiling::kMayStillBeWritten) + "; "
              : "") +
         "copy the log again, or " +
         (remedies == Remedies::kKeepGoing ? "go on without what is damaged with --keep-going, or "
                                           : "") +
         "save what is whole: " + recovery(log);
}

std::string diagnoseLog(const LogFile& log, const std::string& reason) {
  if (const int error = errorOfOpening(log); error != 0) {
    return "cannot be opened: " + files::explain(error);
  }
  if (!log.canBeReadAgain()) {
    return "the log is damaged; write it to a file and read that to learn where, or save what is "
           "whole of it with vyn-profile-viewer recover";
  }
  profiling::FileSource file(log.path);
  profiling::NoSink sink;
  const profiling::WalkResult walk = profiling::walkLog(file, sink);
  if (!walk.isAccepted) {
    return describeDamage(log, walk, Remedies::kRecover);
  }
  return "the reader refused it though its chunks are sound; " +
         (reason.empty() ? "it does not say why: free some memory or give another --reader"
                         : "it says: " + reason);
}

}  // namespace vyn::host
