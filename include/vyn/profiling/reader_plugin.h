#pragma once

#include <string>

#include "vyn/profiling/profile_log_reader.h"

/// The two functions that every reader plug-in exports, unmangled. A host finds them by name:
///
///   auto* create = reinterpret_cast<vyn::profiling::CreateReader*>(dlsym(library,
///   "createReader"));
///
/// 1. Ownership: the host owns the reader and gives it back to the `deleteReader` of the plug-in
///    that made it, before it unloads that plug-in.
/// 2. Host and plug-in are built with the same compiler family and the same standard library, for
///    strings, vectors and streams cross the border.
/// 3. Errors: `createReader` throws std::bad_alloc when memory runs out and reports nothing else; a
///    missing log shows only in `readInputFile`. `deleteReader` never throws.

#define VYN_READER_EXPORT __attribute__((visibility("default")))

namespace vyn::profiling {

/// What `createReader` hands out, whatever reader stands behind it.
using ProfileLogReader = IVynProfileLogReader<VisibilityLevel>;

/// Type of `createReader`, for the host's look-up.
using CreateReader = ProfileLogReader*(const std::string& inputLogPath, VisibilityLevel level);

/// Type of `deleteReader`, for the host's look-up.
using DeleteReader = void(ProfileLogReader* reader);

extern "C" {

/// Makes a reader for the log at `inputLogPath` (copied; the file is not touched yet). `level` is
/// the threshold of readers that filter messages; the JSON reader takes every message.
VYN_READER_EXPORT ProfileLogReader* createReader(const std::string& inputLogPath,
                                                 VisibilityLevel level);

/// Destroys a reader; ignores a null pointer.
VYN_READER_EXPORT void deleteReader(ProfileLogReader* reader);

}  // extern "C"

}  // namespace vyn::profiling
