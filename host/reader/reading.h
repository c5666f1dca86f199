#pragma once

#include <optional>

#include "files/temp_file.h"
#include "host/input/log_file.h"
#include "host/output/output_destination.h"
#include "host/output/output_limit.h"
#include "host/payload/payload_guard.h"
#include "host/reader/reader_library.h"
#include "host/reader/reader_names.h"

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

/// Has the reader print to standard output only. Throws FileError, ClosedPipe.
void printOutput(const Reading& reading);

/// Has the reader write to the destination too. Throws FileError, ClosedPipe; the destination then
/// is as it was.
void writeOutput(const Reading& reading, files::Destination destination,
                 files::TempFile::Existing existing);

}  // namespace vyn::host
