#pragma once

#include <iosfwd>

namespace vyn::profiling {

/// The process's standard streams, for everything in the library that writes to them. Only one file
/// may bring in their initialiser: where it stands decides when they come to life.
std::ostream& standardOutput();
std::ostream& standardError();

}  // namespace vyn::profiling
