#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "analysis/findings.h"

namespace vyn::profiling {

/// The first flaw of a chunk's tables, in the order in which the verifier goes through them.
struct ChunkFault {
  CheckCode code = CheckCode::kUnexplained;
  std::size_t position = 0;   ///< of the flaw, in bytes from the chunk's start
  std::uint64_t message = 0;  ///< of the chunk, from 1 on; 0 for none
  Evidence evidence;
};

/// Reads the tables of a chunk as the verifier does, but to say what is wrong with them: it finds a
/// flaw where the verifier refuses the chunk, and none where it accepts. `maxTables` is how many
/// tables the chunk may name. Reads nothing outside the chunk, goes through no more tables than
/// those, and recurses no deeper than the verifier.
std::optional<ChunkFault> findChunkFault(std::span<const std::uint8_t> chunk,
                                         std::uint64_t maxTables);

}  // namespace vyn::profiling
