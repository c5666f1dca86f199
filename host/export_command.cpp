#include "export_command.h"

#include <CLI/CLI.hpp>
#include <cerrno>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "default_output.h"
#include "document_check.h"
#include "host_error.h"
#include "log_diagnosis.h"
#include "log_file.h"
#include "log_option.h"
#include "option_scope.h"
#include "output_destination.h"
#include "output_options.h"
#include "output_target.h"
#include "text_files.h"
#include "write_behind.h"

namespace vyn::host {
namespace {

constexpr char kJsonFormat[] = "json";

struct ExportOptions {
  std::string format;
  std::string log;
  OutputOptions output;
};

void writeDocument(const LogFile& log, const NamedFile& file, const OutputLimit& limit) {
  TextFile text(file, limit);
  SpoolFile spool(limit);
  WriteBehind written(text);
  profiling::JsonExport document(written, spool, log.path);
  profiling::FileSource source(log.path);
  if (!source.isOpen()) {
    throw HostError(log.name, "cannot be opened: " + explain(errno));
  }
  const profiling::WalkResult walk = profiling::walkLog(source, document);
  if (!walk.isAccepted) {
    throw HostError(log.name, describeDamage(log, walk));
  }
  document.finish();
  written.finish();
}

void exportTo(const LogFile& log, const NamedFile& file, const OutputLimit& limit) {
  try {
    writeDocument(log, file, limit);
    return;
  } catch (const profiling::UnwritableNumber&) {
    throw HostError(file.name, kHoldsNoNumber);
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  }
  throw HostError(log.name, kNotEnoughMemory);
}

void exportTo(const LogFile& log, OutputDestination destination, TempFile::Existing existing,
              const OutputLimit& limit) {
  if (destination.stream.isOpen()) {
    exportTo(log, {destination.stream.get(), destination.name}, limit);
    return;
  }
  OutputTarget target(std::move(destination), OutputTarget::Content::kReplaced, existing);
  exportTo(log, target.workFile().file(), limit);
  target.deliver();
}

void exportLog(const ExportOptions& options) {
  const LogFile log = findLog(options.log);
  checkStandardStreams(log);
  const OutputLimit limit = options.output.limitFor(log);
  if (!options.output.name.empty() || log.isStandardInput) {
    const std::string name = options.output.name.empty() ? "-" : options.output.name;
    exportTo(log, findDestination(name, log), TempFile::Existing::kReplaced, limit);
    return;
  }
  const std::string name = defaultOutputName(log);
  const auto existing =
      options.output.force ? TempFile::Existing::kReplaced : checkDefaultOutput(name, log);
  exportTo(log, findDestination(name, log), existing, limit);
  reportLine("wrote " + name);
}

// The text with which it is refused; empty when all is well.
std::string checkFormat(const std::string& text) {
  return text == kJsonFormat ? ""
                             : "no format is named " + text + " (there is " + kJsonFormat + ")";
}

std::function<void()> declareExport(CLI::App& commandLine) {
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
  commandLine.final_callback(
      [&commandLine, options] { refuseForceWithoutFile(commandLine, options->log); });
  return [options] { exportLog(*options); };
}

}  // namespace

const Verb kExportVerb = {
    "export",
    "Write a log of any size in another format, a chunk at a time",
    "vyn-profile-viewer export json run.log --output run.json",
    declareExport,
};

}  // namespace vyn::host
