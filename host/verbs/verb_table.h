#pragma once

#include <array>

#include "host/verbs/verb.h"

namespace vyn::host {

/// Reads a log and writes what its reader makes of it.
extern const Verb kViewVerb;

/// Tells what logs hold, in figures.
extern const Verb kInfoVerb;

/// Finds what is wrong with logs.
extern const Verb kCheckVerb;

/// Copies what is sound of a damaged log.
extern const Verb kRecoverVerb;

/// Reads a log and writes it in another format, chunk by chunk.
extern const Verb kExportVerb;

/// All verbs, in the order of the help.
inline constexpr std::array kVerbs = {&kViewVerb, &kInfoVerb, &kCheckVerb, &kRecoverVerb,
                                      &kExportVerb};

/// The verb that a command line without one means.
inline constexpr const Verb& kDefaultVerb = kViewVerb;

}  // namespace vyn::host
