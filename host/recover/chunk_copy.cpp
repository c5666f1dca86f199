#include "host/recover/chunk_copy.h"

#include <fcntl.h>

#include <string_view>
#include <utility>

#include "files/file_error.h"

namespace vyn::host {
namespace {

// Bytes.
constexpr std::size_t kBlockSize = std::size_t{1} << 18;
constexpr std::size_t kLongPiece = std::size_t{1} << 14;  // written at once
constexpr std::size_t kPiece = std::size_t{16} << 20;

std::string_view asText(const std::uint8_t* bytes, std::size_t size) {
  return {reinterpret_cast<const char*>(bytes), size};
}

}  // namespace

ChunkCopy::ChunkCopy(files::NamedFile file) : m_file(std::move(file)) {
  m_waiting.reserve(kBlockSize);
}

void ChunkCopy::chunk(const profiling::Chunk& chunk, const profiling::ChunkPlace& place) {
  if (place.present < place.announced) {
    return;
  }
  const auto length = profiling::lengthBytes(place.announced);
  write(asText(length.data(), length.size()));
  write(asText(chunk.data(), chunk.size));
  const auto* messages = profiling::schema::GetProfileLog(chunk.data())->messages();
  ++m_copied.chunks;
  m_copied.messages += messages == nullptr ? 0 : messages->size();
  m_copied.bytes += length.size() + chunk.size;
  if (m_copied.bytes - m_sent >= kPiece) {
    startWriteBack();
  }
}

void ChunkCopy::write(std::string_view bytes) {
  const bool isLong = bytes.size() > kLongPiece;
  if (isLong || m_waiting.size() + bytes.size() > kBlockSize) {
    flush();
  }
  if (isLong) {
    files::writeAll(m_file, bytes);
  } else {
    m_waiting += bytes;
  }
}

void ChunkCopy::flush() {
  files::writeAll(m_file, m_waiting);
  m_waiting.clear();
}

// What is on its way to the disk while the copy is made and checked is not waited for in the end.
// Where the system cannot do that, it is.
void ChunkCopy::startWriteBack() {
  const std::uint64_t count = m_copied.bytes - m_sent;
  [[maybe_unused]] const int started =
      sync_file_range(m_file.descriptor, static_cast<off64_t>(m_sent), static_cast<off64_t>(count),
                      SYNC_FILE_RANGE_WRITE);
  m_sent = m_copied.bytes;
}

void ChunkCopy::finish() {
  flush();
  startWriteBack();
}

void checkCopy(const std::string& path, const std::string& name, const CopiedChunks& copied) {
  profiling::FileSource file(path);
  profiling::NoSink sink;
  const profiling::WalkResult walk = profiling::walkLog(file, sink);
  const CopiedChunks found{walk.soundChunks, walk.messages, walk.soundBytes};
  if (!file.isOpen() || walk.end != profiling::WalkEnd::kEndOfLog || found != copied) {
    throw files::FileError(name,
                           "does not hold what was written to it; check the disk and try again");
  }
}

}  // namespace vyn::host
