#pragma once

#include <string>

#include "host/input/log_file.h"
#include "input/chunk_walk.h"

namespace vyn::host {

/// Of a log that the system could not read to its end.
inline constexpr char kCannotBeRead[] =
    "cannot be read whole; check the disk, or copy the log again";

/// What the user can do about a damaged log beside copying it again.
enum class Remedies {
  kRecover,   ///< save what is whole with the verb recover
  kKeepGoing  ///< or have this verb go on with --keep-going
};

/// What damage ended the walk over the log, and what to do.
std::string describeDamage(const LogFile& log, const profiling::WalkResult& walk,
                           Remedies remedies);

/// Why a reader refused the log, and what to do: walks the log chunk by chunk to its first damage.
/// Without any, the `reason` that the reader printed, or an empty text, must do. Throws
/// std::bad_alloc when a chunk does not fit into memory.
std::string diagnoseLog(const LogFile& log, const std::string& reason);

}  // namespace vyn::host
