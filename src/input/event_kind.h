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

}  // namespace vyn::profiling
