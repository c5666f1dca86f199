#include <unistd.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "base/counted.h"
#include "cli/program.h"
#include "files/file_error.h"
#include "host/input/foreign_format.h"
#include "host/input/log_file.h"
#include "host/input/log_salvage.h"
#include "host/options/keep_going_options.h"
#include "host/options/log_option.h"
#include "host/options/output_options.h"
#include "host/options/report_options.h"
#include "host/output/output_destination.h"
#include "host/output/output_target.h"
#include "host/output/write_behind.h"
#include "host/recover/chunk_copy.h"
#include "host/recover/digested_file.h"
#include "host/report_line.h"
#include "host/verbs/verb_table.h"

namespace vyn::host {
namespace {

struct RecoverOptions {
  std::string log;
  std::string output;
  bool searches = false;
  Progress progress = Progress::kShown;
};

files::Destination findPlace(const RecoverOptions& options, const LogFile& log) {
  files::Destination destination = findDestination(options.output, log);
  if (isatty(destination.stream.get()) != 0) {
    throw files::FileError(
        destination.name,
        "is a terminal, which cannot show a log; name a file or pass it to a program");
  }
  return destination;
}

// All goes to standard error: a log may be on its way through standard output.
void report(const LogFile& log, const std::string& output, const CopiedChunks& copied,
            const LossReport& losses, bool searched) {
  losses.print(log.name);
  std::string lost = losses.isEmpty() ? "nothing was lost" : "lost " + losses.sum();
  if (!losses.isEmpty() && !searched) {
    lost += "; --search looks for sound chunks behind the damage, too";
  }
  if (copied.chunks == 0 && !losses.isEmpty()) {
    const auto format =
        log.canBeReadAgain() ? recogniseForeignFormat(log.path) : std::optional<std::string>();
    reportLine(log.name + ": " + (format ? *format + "; " : "") +
               "nothing could be saved: " + output + " is empty; " + lost);
    return;
  }
  reportLine(log.name + ": saved " + profiling::counted(copied.chunks, "chunk") + ", " +
             profiling::counted(copied.messages, "message") + ", " +
             profiling::counted(copied.bytes, "byte") + " to " + output + "; " + lost);
}

// An empty copy in the place of a file would be a loss more.
void checkWorthReplacing(const LogFile& log, const OutputTarget& target, const ChunkCopy& copy,
                         const LossReport& losses, bool isThere) {
  if (isThere && copy.copied().chunks == 0 && !losses.isEmpty()) {
    losses.print(log.name);
    throw files::FileError(log.name,
                           "nothing could be saved; " + target.name() + " was left as it is");
  }
}

int recover(const RecoverOptions& options) {
  const LogFile log = findLog(options.log);
  checkStandardStreams(log);
  files::Destination destination = findPlace(options, log);
  const bool isThere = destination.found.has_value();
  OutputTarget target(std::move(destination), OutputTarget::Content::kReplaced,
                      files::TempFile::Existing::kReplaced);
  DigestedFile file(target.workFile().file());
  WriteBehind written(file);
  ChunkCopy copy(written);
  LossReport losses;
  salvageLogFile(log, copy, losses, {options.searches, true}, options.progress);
  checkWorthReplacing(log, target, copy, losses, isThere);
  copy.finish();
  written.finish();
  // Each chunk was verified, as one of a log, before it was written.
  file.check(target.workFile().path(), target.name());
  target.deliver();
  report(log, target.name(), copy.copied(), losses, options.searches);
  return losses.isEmpty() ? cli::kDone : cli::kDamagedLog;
}

void declareRecover(CLI::App& commandLine, int& exitStatus) {
  const auto options = std::make_shared<RecoverOptions>();
  addLogOption(commandLine, options->log);
  addOutputOption(commandLine, options->output,
                  "Where to write what could be saved, - for standard output")
      ->required();
  addSearchOption(commandLine, options->searches);
  addQuietOption(commandLine, options->progress);
  commandLine.final_callback([&exitStatus, options] { exitStatus = recover(*options); });
}

}  // namespace

const Verb kRecoverVerb = {
    "recover",
    "Copy what is sound of a damaged log into a log of its own",
    "vyn-profile-viewer recover run.log --output whole.log --search",
    declareRecover,
};

}  // namespace vyn::host
