#pragma once

#include <profile_log_generated.h>

#include "json/value_builder.h"

namespace vyn::profiling {

/// Sends a message with all its events.
void messageToJson(const schema::Message& message, ValueBuilder& builder);

}  // namespace vyn::profiling
