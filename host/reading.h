#pragma once

#include <optional>

#include "log_file.h"
#include "output_destination.h"
#include "output_limit.h"
#include "payload_guard.h"
#include "reader_library.h"
#include "reader_names.h"
#include "temp_file.h"

namespace vyn::host {

/// What is to be read, by whom, and within which bounds.
struct Reading {
  const ReaderLibrary& library;
  const LogFile& log;
  OutputKind kind;
  profiling::VisibilityLevel level;
  std::optional<PayloadPlaces> payloads;  ///< none: payloads are not written
  OutputLimit limit;
};

/// Has the reader print to standard output only. Throws HostError, ClosedPipe.
void printOutput(const Reading& reading);

/// Has the reader write to the destination too. Throws HostError, ClosedPipe; the destination then
/// is as it was.
void writeOutput(const Reading& reading, OutputDestination destination,
                 TempFile::Existing existing);

}  // namespace vyn::host
