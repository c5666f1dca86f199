#pragma once

#include <profile_log_generated.h>

#include <cstdint>

#include "vyn/profiling/event_node.h"

namespace vyn::profiling {

inline bool hasType(const EventNode& event, schema::EventType type) {
  return event.type == static_cast<std::uint32_t>(type);
}

/// An OBJECT event carries a payload for a file, not a value to print.
inline bool isObjectEvent(const EventNode& event) {
  return event.unit == static_cast<std::uint32_t>(schema::EventUnit::OBJECT);
}

/// The value word as an unsigned number, whatever its type. A text's word is an address, on which
/// no output may depend: it counts as 0.
inline std::uint64_t numberOf(const EventNode& event) {
  return event.dataType == EventDataType::STRING ? 0 : event.value.uint64;
}

}  // namespace vyn::profiling
