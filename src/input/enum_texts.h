#pragma once

#include <profile_log_generated.h>

namespace vyn::profiling {

/// The texts of the log's enumerations, constant and NUL-terminated; empty for a number without
/// one.
const char* methodText(schema::MethodType method);
const char* eventTypeText(schema::EventType type);
const char* eventUnitText(schema::EventUnit unit);

}  // namespace vyn::profiling
