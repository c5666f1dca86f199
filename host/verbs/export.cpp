#include <CLI/CLI.hpp>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "cli/program.h"
#include "files/file_error.h"
#include "host/input/log_diagnosis.h"
#include "host/input/log_file.h"
#include "host/input/log_reading.h"
#include "host/input/log_salvage.h"
#include "host/options/keep_going_options.h"
#include "host/options/log_option.h"
#include "host/options/option_scope.h"
#include "host/options/output_options.h"
#include "host/output/document_check.h"
#include "host/output/document_place.h"
#include "host/output/output_destination.h"
#include "host/output/output_target.h"
#include "host/output/text_files.h"
#include "host/output/write_behind.h"
#include "host/report_line.h"
#include "host/verbs/verb_table.h"

namespace vyn::host {
namespace {

constexpr char kJsonFormat[] = "json";

struct ExportOptions {
  std::string format;
  std::string log;
  OutputOptions output;
  KeepGoing keepGoing;
};

// Returns what is missing of a damaged log.
LossReport readLog(const LogFile& log, profiling::MessageSink& sink, const KeepGoing& keepGoing) {
  LossReport losses;
  if (keepGoing.isAsked) {
    salvageLogFile(log, sink, losses, {keepGoing.searches, false}, Progress::kHidden);
    return losses;
  }
  const profiling::WalkResult walk = walkLogFile(log, sink, Progress::kHidden);
  if (!walk.isAccepted) {
    throw files::FileError(log.name, describeDamage(log, walk, Remedies::kKeepGoing));
  }
  return losses;
}

LossReport writeDocument(const LogFile& log, const files::NamedFile& file,
                         const ExportOptions& options) {
  const OutputLimit limit = options.output.limitFor(log);
  TextFile text(file, limit);
  SpoolFile spool(limit);
  WriteBehind written(text);
  profiling::JsonExport document(written, spool, log.path);
  LossReport losses = readLog(log, document, options.keepGoing);
  document.finish();
  written.finish();
  return losses;
}

LossReport exportTo(const LogFile& log, DocumentPlace& place, const ExportOptions& options) {
  files::Destination& destination = place.destination;
  if (destination.stream.isOpen()) {
    return writeDocument(log, {destination.stream.get(), destination.name}, options);
  }
  OutputTarget target(std::move(destination), OutputTarget::Content::kReplaced, place.existing);
  LossReport losses = writeDocument(log, target.workFile().file(), options);
  target.deliver();
  return losses;
}

int report(const LogFile& log, const DocumentPlace& place, const LossReport& losses) {
  reportUnasked(place);
  if (losses.isEmpty()) {
    return cli::kDone;
  }
  losses.print(log.name);
  if (losses.hasLost()) {
    reportLine(log.name + ": the document lacks what is lost: " + losses.sum());
  }
  return cli::kDamagedLog;
}

int exportLog(const ExportOptions& options) {
  const LogFile log = findLog(options.log);
  checkStandardStreams(log);
  DocumentPlace place = findDocumentPlace(options.output.name, options.output.force, log);
  // What went into a stream cannot be taken back.
  const std::string name = place.destination.name;
  const char* const state = place.destination.stream.isOpen() ? "breaks off, " : "not written, ";
  try {
    const LossReport losses = exportTo(log, place, options);
    return report(log, place, losses);
  } catch (const profiling::UnwritableNumber&) {
    throw files::FileError(name, std::string(state) + kHoldsNoNumber);
  } catch (const std::bad_alloc&) {
    throw files::FileError(log.name, kNotEnoughMemory);
  } catch (const std::length_error&) {
    throw files::FileError(log.name, kNotEnoughMemory);
  }
}

// The text with which it is refused; empty when all is well.
std::string checkFormat(const std::string& text) {
  return text == kJsonFormat ? ""
                             : "no format is named " + text + " (there is " + kJsonFormat + ")";
}

void declareExport(CLI::App& commandLine, int& exitStatus) {
  const auto options = std::make_shared<ExportOptions>();
  commandLine.add_option("FORMAT", options->format, "json: the document that view writes")
      ->type_name("")
      ->required()
      ->check(checkFormat);
  addLogOption(commandLine, options->log);
  addOutputOptions(commandLine, options->output,
                   "Where to write, - for standard output. Without it: to LOG's name with .json in "
                   "the current directory, unless something else than LOG's document is there, or "
                   "to standard output when LOG is -");
  addKeepGoingOptions(commandLine, options->keepGoing);
  commandLine.final_callback([&commandLine, &exitStatus, options] {
    refuseForceWithoutFile(commandLine, options->log);
    exitStatus = exportLog(*options);
  });
}

}  // namespace

const Verb kExportVerb = {
    "export",
    "Write a log of any size in another format, a chunk at a time",
    "vyn-profile-viewer export json run.log --output run.json",
    declareExport,
};

}  // namespace vyn::host
