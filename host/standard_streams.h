#pragma once

#include "file_descriptor.h"

namespace vyn::host {

/// Call first. Makes failing writes come back as errors instead of killing the program, and fills
/// descriptors 0 to 2 when they are closed, lest an output file get the number of a standard stream
/// and the reader's log lines with it. Reading from or writing to one that was closed fails.
void prepareStandardStreams();

/// Call when everything was printed. Throws HostError when some of it could not be written.
void finishStandardOutput();

/// Empties the program's own buffers.
void flushStandardOutput();

/// A further descriptor of standard output, which diversions leave alone. Throws HostError.
FileDescriptor duplicateStandardOutput();

}  // namespace vyn::host
