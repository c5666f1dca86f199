#pragma once

#include "verb.h"

namespace vyn::host {

/// Reads a log and writes it in another format, chunk by chunk.
extern const Verb kExportVerb;

}  // namespace vyn::host
