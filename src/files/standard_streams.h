#pragma once

namespace vyn::files {

/// Call first. Makes failing writes come back as errors instead of killing the program, and fills
/// descriptors 0 to 2 when they are closed, lest an output file get the number of a standard stream
/// and what others print there with it. Then reading from standard input and writing to standard
/// output fail; what goes to standard error is dropped.
void prepareStandardStreams();

/// The path, as the user gives it, that means standard input or standard output.
inline constexpr char kStandardStreamPath[] = "-";

/// What messages call standard output.
inline constexpr char kStandardOutputName[] = "standard output";

/// Passes on what waits in the buffers of the C and C++ libraries.
void flushStandardOutput();

/// Call when everything was printed. Throws FileError when some of it could not be written,
/// ClosedPipe when nobody reads it any more.
void finishStandardOutput();

}  // namespace vyn::files
