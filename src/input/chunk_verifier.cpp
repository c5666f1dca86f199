#include "input/chunk_verifier.h"

#include <profile_log_generated.h>

#include "input/chunk_format.h"

namespace vyn::profiling {
namespace {

constexpr flatbuffers::uoffset_t kMaxTableDepth = 64;

// How many tables a chunk may name. Each is named by an offset in a slot of its own, so a log that
// a writer made never reaches this. Vectors of sub-events that are shared between events can name
// far more, level upon level, and would take centuries to walk. The library's own limit of a
// million tables is too low for long runs.
flatbuffers::uoffset_t maxTables(std::size_t size) {
  return static_cast<flatbuffers::uoffset_t>(size / sizeof(flatbuffers::uoffset_t));
}

}  // namespace

bool isSoundChunk(const std::uint8_t* bytes, std::size_t size) {
  // Before the verifier is built: it aborts on sizes that it cannot hold.
  if (!isPlausibleChunkSize(size)) {
    return false;
  }
  flatbuffers::Verifier::Options options;
  options.max_depth = kMaxTableDepth;
  options.max_tables = maxTables(size);
  options.check_alignment = false;
  options.check_nested_flatbuffers = true;
  flatbuffers::Verifier verifier(bytes, size, options);
  return schema::VerifyProfileLogBuffer(verifier);
}

}  // namespace vyn::profiling
