#include "view_command.h"

#include <functional>
#include <iostream>
#include <optional>
#include <string>

#include "default_output.h"
#include "free_memory.h"
#include "guarded_reader.h"
#include "host_error.h"
#include "log_file.h"
#include "output_destination.h"
#include "printable_text.h"
#include "reader_library.h"
#include "reader_names.h"
#include "reader_output.h"
#include "reading.h"
#include "standard_streams.h"
#include "view_options.h"

namespace vyn::host {
namespace {

profiling::VisibilityLevel levelOf(const ViewOptions& options) {
  return static_cast<profiling::VisibilityLevel>(options.level);
}

std::string headerDetails(const ReaderLibrary& library, const LogFile& log,
                          const ViewOptions& options, const ReaderOutput& said) {
  GuardedReader reader(library, log, levelOf(options));
  reader.read(false, said);
  std::string details = reader.headerDetails();
  reader.giveBack();
  return details;
}

void printHeader(const ReaderLibrary& library, const LogFile& log, const ViewOptions& options) {
  ReaderOutput said;  // statistics that the reader prints while reading
  const std::string details = headerDetails(library, log, options, said);
  if (details.empty()) {
    throw HostError(log.name, "the log holds no header; read it without --header");
  }
  said.passToStandardError();
  std::cout << printable(details, LineFeeds::kKept);
  finishStandardOutput();
}

// Where a payload may go; none when payloads are not asked for.
std::optional<PayloadPlaces> payloadPlaces(const ViewOptions& options) {
  if (!options.payloads) {
    return std::nullopt;
  }
  return options.payloadsAnywhere ? PayloadPlaces::kAnywhere : PayloadPlaces::kCurrentDirectory;
}

void writeDefaultOutput(const Reading& reading, bool replaces) {
  const std::string name = defaultOutputName(reading.log);
  const auto existing =
      replaces ? TempFile::Existing::kReplaced : checkDefaultOutput(name, reading.log);
  writeOutput(reading, findDestination(name, reading.log), existing);
  reportLine("wrote " + name);
}

void view(const ViewOptions& options) {
  const LogFile log = findLog(options.log);
  checkStandardStreams(log);
  const ReaderChoice reader = chooseReader(options.reader).value();
  if (reader.output == OutputKind::kJsonDocument) {
    checkRoomForDocument(log);
  }
  const ReaderLibrary library(reader);
  const Reading reading{library,
                        log,
                        reader.output,
                        levelOf(options),
                        payloadPlaces(options),
                        options.output.limitFor(log)};
  if (options.header) {
    printHeader(library, log, options);
  } else if (!options.output.name.empty()) {
    writeOutput(reading, findDestination(options.output.name, log), TempFile::Existing::kReplaced);
  } else if (reader.output == OutputKind::kJsonDocument && log.isStandardInput) {
    writeOutput(reading, findDestination("-", log), TempFile::Existing::kReplaced);
  } else if (reader.output == OutputKind::kJsonDocument) {
    writeDefaultOutput(reading, options.output.force);
  } else {
    printOutput(reading);
  }
}

std::function<void()> declareView(CLI::App& commandLine) {
  const auto options = declareViewOptions(commandLine);
  return [options] { view(*options); };
}

}  // namespace

const Verb kViewVerb = {
    "view",
    "Turn a log into a JSON document, or print its summary",
    "vyn-profile-viewer view run.log --output run.json",
    declareView,
};

}  // namespace vyn::host
