#include "log_diagnosis.h"

#include <fcntl.h>
#include <profile_log_generated.h>

#include <cerrno>
#include <cstdint>

#include "file_descriptor.h"
#include "foreign_format.h"
#include "host_error.h"
#include "input/chunk_format.h"
#include "input/chunk_stream.h"
#include "input/chunk_verifier.h"

namespace vyn::host {
namespace {

// The whole chunks from the start of a log.
struct SoundPart {
  std::uint64_t chunks = 0;
  std::uint64_t messages = 0;
  std::uint64_t bytes = 0;
  bool isWholeLog = false;
  bool isUnreadable = false;  // behind it
};

std::uint64_t messageCount(const profiling::ChunkBuffer& chunk) {
  const auto* messages = profiling::schema::GetProfileLog(chunk->data())->messages();
  return messages == nullptr ? 0 : messages->size();
}

SoundPart findSoundPart(const std::string& path) {
  SoundPart part;
  profiling::ChunkStream stream(path);
  profiling::ChunkVerifier verifier;
  while (const profiling::ChunkBuffer chunk = stream.next()) {
    if (!verifier.isSound(chunk->data(), chunk->capacity())) {
      part.isUnreadable = stream.hasFailed();
      return part;
    }
    ++part.chunks;
    part.messages += messageCount(chunk);
    part.bytes += sizeof(profiling::ChunkLength) + chunk->capacity();
  }
  part.isWholeLog = true;
  return part;
}

std::string counted(std::uint64_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// What hinders the system from opening the log, or any file where the log is gone when it is opened
// again; 0 when nothing does.
int errorOfOpening(const LogFile& log) {
  const std::string path = log.canBeReadAgain() ? log.path : "/dev/null";
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC));
  return file.isOpen() ? 0 : errno;
}

std::string describeDamage(const SoundPart& part) {
  const std::string offset = std::to_string(part.bytes);
  return "damaged after chunk " + std::to_string(part.chunks) + " at byte offset " + offset +
         " (whole chunks before it: " + std::to_string(part.chunks) + ", " +
         counted(part.messages, "message") + "); copy the log again, or keep what is whole with " +
         "head -c " + offset;
}

}  // namespace

std::string diagnoseLog(const LogFile& log, const std::string& reason) {
  if (const int error = errorOfOpening(log); error != 0) {
    return "cannot be opened: " + explain(error);
  }
  if (!log.canBeReadAgain()) {
    return "the log is damaged; write it to a file and read that to learn where";
  }
  const SoundPart part = findSoundPart(log.path);
  if (part.isUnreadable) {
    return "cannot be read whole; check the disk, or copy the log again";
  }
  if (part.isWholeLog) {
    return "the reader refused it though its chunks are sound; " +
           (reason.empty() ? "it does not say why: free some memory or give another --reader"
                           : "it says: " + reason);
  }
  if (part.chunks == 0) {
    return recogniseForeignFormat(log.path).value_or(
        "not a profiling log, or damaged from its first chunk on; give a log that vyn-net-run "
        "wrote");
  }
  return describeDamage(part);
}

}  // namespace vyn::host
