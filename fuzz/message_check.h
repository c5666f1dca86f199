#pragma once

#include <profile_log_generated.h>
#include <rapidjson/document.h>

namespace vyn::fuzz {

/// Aborts unless the parsed message says exactly what the chunk's message says.
void checkMessage(const rapidjson::Value& parsed, const profiling::schema::Message& message);

/// True when a number of the message's events is not finite, which no JSON text can hold.
bool hasUnwritableNumber(const profiling::schema::Message& message);

}  // namespace vyn::fuzz
