#include <CLI/CLI.hpp>
#include <charconv>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

#include "cli/spelling.h"
#include "files/file_error.h"
#include "files/printable_text.h"
#include "files/standard_streams.h"
#include "host/input/free_memory.h"
#include "host/input/log_file.h"
#include "host/options/log_option.h"
#include "host/options/option_scope.h"
#include "host/options/output_options.h"
#include "host/output/document_place.h"
#include "host/output/output_destination.h"
#include "host/reader/guarded_reader.h"
#include "host/reader/reader_library.h"
#include "host/reader/reader_names.h"
#include "host/reader/reader_output.h"
#include "host/reader/reading.h"
#include "host/verbs/verb_table.h"

namespace vyn::host {
namespace {

struct ViewOptions {
  static constexpr int kMinLevel = -128;
  static constexpr int kMaxLevel = 127;

  std::string log;
  OutputOptions output;
  std::string reader = "json";
  int level = kMaxLevel;
  bool payloads = false;
  bool payloadsAnywhere = false;
  bool header = false;
};

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
    throw files::FileError(log.name, "the log holds no header; read it without --header");
  }
  said.passToStandardError();
  std::cout << files::printable(details, files::LineFeeds::kKept);
  files::finishStandardOutput();
}

// Where a payload may go; none when payloads are not asked for.
std::optional<PayloadPlaces> payloadPlaces(const ViewOptions& options) {
  if (!options.payloads) {
    return std::nullopt;
  }
  return options.payloadsAnywhere ? PayloadPlaces::kAnywhere : PayloadPlaces::kCurrentDirectory;
}

void writeToPlace(const Reading& reading, const OutputOptions& options) {
  DocumentPlace place = findDocumentPlace(options.name, options.force, reading.log);
  writeOutput(reading, std::move(place.destination), place.existing);
  reportUnasked(place);
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
  } else if (reader.output == OutputKind::kJsonDocument || !options.output.name.empty()) {
    writeToPlace(reading, options.output);
  } else {
    printOutput(reading);
  }
}

// The texts with which validators refuse; empty when all is well.
std::string checkReader(const std::string& text) {
  if (chooseReader(text)) {
    return "";
  }
  const auto meant = cli::findMeant(CLI::detail::to_lower(text), readerNameList());
  return "no reader is named " + text +
         (meant ? " (did you mean " + *meant + "?" : " (there are " + readerNames()) +
         "; a library's path needs a /)";
}

std::string checkLevel(const std::string& text) {
  int level = 0;
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), level);
  const bool isWhole = problem == std::errc() && end == text.data() + text.size();
  return isWhole && level >= ViewOptions::kMinLevel && level <= ViewOptions::kMaxLevel
             ? ""
             : "'" + text + "' is not a whole number from " +
                   std::to_string(ViewOptions::kMinLevel) + " to " +
                   std::to_string(ViewOptions::kMaxLevel);
}

void addReader(CLI::App& commandLine, ViewOptions& options) {
  commandLine
      .add_option("-r,--reader", options.reader,
                  "The reader: " + readerNames() + ", or the path of a library, with a /")
      ->type_name("NAME|PATH")
      ->capture_default_str()
      ->check(checkReader);
  commandLine
      .add_option("-l,--level", options.level,
                  "Take messages of a lower visibility level than this (summary)")
      ->type_name("N")
      ->capture_default_str()
      ->check(checkLevel);
}

constexpr char kOutputPurpose[] =
    "Where to write, - for standard output. json: the document, otherwise written to LOG's name "
    "with .json in the current directory, unless something else than LOG's document is there, or "
    "to standard output when LOG is -. summary: a CSV listing, added to what FILE holds";

CLI::Option* addPayloads(CLI::App& commandLine, ViewOptions& options) {
  CLI::Option* payloads =
      commandLine
          .add_flag("--payloads", options.payloads,
                    "Write object payloads to files in the current directory (summary)")
          ->disable_flag_override();
  commandLine
      .add_flag("--payloads-anywhere", options.payloadsAnywhere,
                "Let payloads leave the current directory and go through symbolic links")
      ->disable_flag_override()
      ->needs(payloads);
  return payloads;
}

void declareView(CLI::App& commandLine, int& /*exitStatus*/) {
  const auto options = std::make_shared<ViewOptions>();
  addLogOption(commandLine, options->log);
  CLI::Option* output = addOutputOptions(commandLine, options->output, kOutputPurpose);
  addReader(commandLine, *options);
  CLI::Option* payloads = addPayloads(commandLine, *options);
  commandLine.add_flag("--header", options->header, "Print only the log's header (summary)")
      ->disable_flag_override()
      ->excludes(output)
      ->excludes(payloads)
      ->excludes(commandLine.get_option("--max-output"));
  commandLine.final_callback([&commandLine, options] {
    refuseIgnoredOptions(commandLine, chooseReader(options->reader).value().output);
    refuseForceWithoutFile(commandLine, options->log);
    view(*options);
  });
}

}  // namespace

const Verb kViewVerb = {
    "view",
    "Turn a log into a JSON document, or print its summary",
    "vyn-profile-viewer view run.log --output run.json",
    declareView,
};

}  // namespace vyn::host
