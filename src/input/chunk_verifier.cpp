#include "input/chunk_verifier.h"

#include <profile_log_generated.h>

#include "input/chunk_format.h"
#include "input/table_count.h"

namespace vyn::profiling {
namespace {

bool verifies(std::span<const std::uint8_t> chunk, std::size_t maxTables) {
  // Before the verifier is built: it aborts on sizes that it cannot hold.
  if (!isPlausibleChunkSize(chunk.size())) {
    return false;
  }
  flatbuffers::Verifier::Options options;
  options.max_depth = ChunkVerifier::kMaxTableDepth;
  options.max_tables = static_cast<flatbuffers::uoffset_t>(maxTables);
  options.check_alignment = false;
  options.check_nested_flatbuffers = true;
  flatbuffers::Verifier verifier(chunk.data(), chunk.size(), options);
  return schema::VerifyProfileLogBuffer(verifier);
}

}  // namespace

// Every table that a writer made has a slot of its own that names it, so a usual log never comes
// near the first limit. Sub-events that are shared between events, layer upon layer, can name more
// tables than anyone could ever walk; the library's own limit of a million is too low for long
// runs.
bool ChunkVerifier::isSound(std::span<const std::uint8_t> chunk) {
  const std::size_t size = chunk.size();
  if (isSoundByItself(chunk)) {
    return true;
  }
  if (m_allowance == 0 || !verifies(chunk, size + m_allowance)) {
    return false;
  }
  const std::uint64_t tables = tableCount(*schema::GetProfileLog(chunk.data()));
  m_allowance -= static_cast<std::uint32_t>(tables > size ? tables - size : 0);
  return true;
}

bool ChunkVerifier::isSoundByItself(std::span<const std::uint8_t> chunk) {
  return verifies(chunk, chunk.size());
}

}  // namespace vyn::profiling
