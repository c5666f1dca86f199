#include "table_total.h"

#include "input/chunk_stream.h"
#include "input/chunk_verifier.h"
#include "input/table_count.h"

namespace vyn::fuzz {

std::uint64_t tablesOf(const std::string& logPath) {
  std::uint64_t total = 0;
  profiling::ChunkStream chunks(logPath);
  profiling::ChunkVerifier verifier;
  while (const profiling::ChunkBuffer chunk = chunks.next()) {
    if (!verifier.isSound(chunk->data(), chunk->capacity())) {
      break;
    }
    total += profiling::tableCount(*profiling::schema::GetProfileLog(chunk->data()));
  }
  return total;
}

}  // namespace vyn::fuzz
