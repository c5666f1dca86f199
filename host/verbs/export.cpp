#include <CLI/CLI.hpp>
#include <cerrno>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "files/file_error.h"
#include "host/input/log_diagnosis.h"
#include "host/input/log_file.h"
#include "host/options/log_option.h"
#include "host/options/option_scope.h"
#include "host/options/output_options.h"
#include "host/output/document_check.h"
#include "host/output/document_place.h"
#include "host/output/output_destination.h"
#include "host/output/output_target.h"
#include "host/output/text_files.h"
#include "host/output/write_behind.h"
#include "host/verbs/verb_table.h"

namespace vyn::host {
namespace {

constexpr char kJsonFormat[] = "json";

struct ExportOptions {
  std::string format;
  std::string log;
  OutputOptions output;
};

void writeDocument(const LogFile& log, const files::NamedFile& file, const OutputLimit& limit) {
  TextFile text(file, limit);
  SpoolFile spool(limit);
  WriteBehind written(text);
  profiling::JsonExport document(written, spool, log.path);
  profiling::FileSource source(log.path);
  if (!source.isOpen()) {
    throw files::FileError(log.name, "cannot be opened: " + files::explain(errno));
  }
  const profiling::WalkResult walk = profiling::walkLog(source, document);
  if (!walk.isAccepted) {
    throw files::FileError(log.name, describeDamage(log, walk));
  }
  checkStillWhole(log);
  document.finish();
  written.finish();
}

void exportTo(const LogFile& log, files::Destination destination,
              files::TempFile::Existing existing, const OutputLimit& limit) {
  if (destination.stream.isOpen()) {
    writeDocument(log, {destination.stream.get(), destination.name}, limit);
    return;
  }
  OutputTarget target(std::move(destination), OutputTarget::Content::kReplaced, existing);
  writeDocument(log, target.workFile().file(), limit);
  target.deliver();
}

void exportLog(const ExportOptions& options) {
  const LogFile log = findLog(options.log);
  checkStandardStreams(log);
  DocumentPlace place = findDocumentPlace(options.output.name, options.output.force, log);
  // What went into a stream cannot be taken back.
  const std::string name = place.destination.name;
  const char* const state = place.destination.stream.isOpen() ? "breaks off, " : "not written, ";
  try {
    exportTo(log, std::move(place.destination), place.existing, options.output.limitFor(log));
  } catch (const profiling::UnwritableNumber&) {
    throw files::FileError(name, std::string(state) + kHoldsNoNumber);
  } catch (const std::bad_alloc&) {
    throw files::FileError(log.name, kNotEnoughMemory);
  } catch (const std::length_error&) {
    throw files::FileError(log.name, kNotEnoughMemory);
  }
  reportUnasked(place);
}

// The text with which it is refused; empty when all is well.
std::string checkFormat(const std::string& text) {
  return text == kJsonFormat ? ""
                             : "no format is named " + text + " (there is " + kJsonFormat + ")";
}

void declareExport(CLI::App& commandLine, int& /*exitStatus*/) {
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
  commandLine.final_callback([&commandLine, options] {
    refuseForceWithoutFile(commandLine, options->log);
    exportLog(*options);
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
