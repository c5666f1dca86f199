#pragma once

#include "verb.h"

namespace vyn::host {

/// Reads a log and writes what its reader makes of it.
extern const Verb kViewVerb;

}  // namespace vyn::host
