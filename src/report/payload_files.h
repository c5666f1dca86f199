#pragma once

#include <functional>
#include <vector>

#include "input/execution_records.h"
#include "report/payload_names.h"

namespace vyn::profiling {

/// Writes an OBJECT event's bytes to the file that it names, or to the next free numbered one. The
/// name ends before its first zero byte; an event without a name has no file. A file that cannot be
/// made is told in a log line.
void writePayloadFile(const EventNode& event, PayloadNames& names);

/// Hands the OBJECT events of every execution to `write`: each once, and once more for each of its
/// sub-events.
void forEachExecutionPayload(const std::vector<ExecutionGroup>& groups,
                             const std::function<void(const EventNode&)>& write);

}  // namespace vyn::profiling
