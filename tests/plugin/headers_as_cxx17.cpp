// Compiles when each public header stands alone under C++17 with only the standard library.

#include "vyn/profiling/event_node.h"
#include "vyn/profiling/profile_log_reader.h"
#include "vyn/profiling/reader_plugin.h"
#include "vyn/profiling/visibility_level.h"

static_assert(sizeof(vyn::profiling::VisibilityLevel) == 1);
static_assert(sizeof(vyn::profiling::EventValue) == 8);
