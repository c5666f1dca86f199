#pragma once

#include <cstdint>
#include <string>

#include "vyn/profiling/event_node.h"

namespace vyn::profiling {

/// Blanks before a time and an event of the console summary; twice as many before a sub-event's.
inline constexpr std::uint64_t kIndentWidth = 4;

/// The value of an event as text, plain decimal whatever the host's locale; empty for a type
/// without a printable value. A null text pointer throws std::logic_error.
std::string formatEventValue(EventDataType dataType, EventValue value);

/// A unit as the CSV names it ("BYTES"), and as it stands behind a console value (" bytes").
/// Units that have no name of their own are taken for microseconds.
const char* unitToString(std::uint32_t unit);
const char* unitToSuffix(std::uint32_t unit);

}  // namespace vyn::profiling
