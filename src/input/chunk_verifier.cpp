#include "input/chunk_verifier.h"

#include <profile_log_generated.h>

#include <limits>

#include "input/chunk_format.h"

namespace vyn::profiling {
namespace {

constexpr flatbuffers::uoffset_t kMaxTableDepth = 64;

// The library's own limit of a million tables is too low for long runs.
constexpr flatbuffers::uoffset_t kMaxTables = std::numeric_limits<flatbuffers::uoffset_t>::max();

}  // namespace

bool isSoundChunk(const std::uint8_t* bytes, std::size_t size) {
  // Before the verifier is built: it aborts on sizes that it cannot hold.
  if (!isPlausibleChunkSize(size)) {
    return false;
  }
  flatbuffers::Verifier::Options options;
  options.max_depth = kMaxTableDepth;
  options.max_tables = kMaxTables;
  options.check_alignment = false;
  options.check_nested_flatbuffers = true;
  flatbuffers::Verifier verifier(bytes, size, options);
  return schema::VerifyProfileLogBuffer(verifier);
}

}  // namespace vyn::profiling
