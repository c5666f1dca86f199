#pragma once

#include <profile_log_generated.h>

#include "json/value_builder.h"

namespace vyn::profiling {

/// Sends an event with, recursively, its sub-events.
void eventToJson(const schema::Event& event, ValueBuilder& builder);

/// Sends events as an array.
void eventsToJson(const flatbuffers::Vector<flatbuffers::Offset<schema::Event>>& events,
                  ValueBuilder& builder);

}  // namespace vyn::profiling
