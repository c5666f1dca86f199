#include "view_command.h"

#include <CLI/CLI.hpp>
#include <cctype>
#include <cstdint>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "default_output.h"
#include "guarded_reader.h"
#include "host_error.h"
#include "log_file.h"
#include "output_destination.h"
#include "reader_library.h"
#include "reader_names.h"
#include "reading.h"
#include "standard_streams.h"

namespace vyn::host {
namespace {

constexpr int kMinLevel = -128;
constexpr int kMaxLevel = 127;

struct ViewOptions {
  std::string log;
  std::string output;  // empty: none was given
  std::string reader = "json";
  int level = kMaxLevel;
  bool payloads = false;
  bool payloadsAnywhere = false;
  bool header = false;
  bool force = false;
  std::optional<std::uint64_t> maxOutput;
};

profiling::VisibilityLevel levelOf(const ViewOptions& options) {
  return static_cast<profiling::VisibilityLevel>(options.level);
}

std::string headerDetails(const ReaderLibrary& library, const LogFile& log,
                          const ViewOptions& options) {
  const StandardOutputDiversion diversion;  // statistics that the reader prints while reading
  GuardedReader reader(library, log, levelOf(options));
  reader.read(false);
  std::string details = reader.headerDetails();
  reader.giveBack();
  return details;
}

void printHeader(const ReaderLibrary& library, const LogFile& log, const ViewOptions& options,
                 OutputKind kind) {
  const std::string details = headerDetails(library, log, options);
  if (details.empty()) {
    throw HostError(log.path, kind == OutputKind::kJsonDocument
                                  ? "this reader keeps no header; add --reader summary"
                                  : "the log holds no header; read it without --header");
  }
  std::cout << details;
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
  const ReaderLibrary library(reader);
  const Reading reading{
      library,
      log,
      reader.output,
      levelOf(options),
      payloadPlaces(options),
      options.maxOutput ? OutputLimit(*options.maxOutput) : OutputLimit::standardFor(log)};
  if (options.header) {
    printHeader(library, log, options, reader.output);
  } else if (!options.output.empty()) {
    writeOutput(reading, findDestination(options.output, log), TempFile::Existing::kReplaced);
  } else if (reader.output == OutputKind::kJsonDocument) {
    writeDefaultOutput(reading, options.force);
  } else {
    printOutput(reading);
  }
}

// The texts with which validators refuse; empty when all is well.
std::string checkReader(const std::string& text) {
  return chooseReader(text) ? ""
                            : "no reader is named " + text + " (there are " + readerNames() +
                                  "; a library's path needs a /)";
}

std::string checkOutput(const std::string& text) {
  return text.empty() ? "the name of the output is empty" : "";
}

// Sizes become bytes, "none" the largest number.
std::string readSize(std::string& text) {
  if (text == "none") {
    text = std::to_string(OutputLimit::kNone);
    return "";
  }
  if (text.empty() || std::isdigit(static_cast<unsigned char>(text.front())) == 0) {
    return "'" + text + "' is no size; give bytes, a size like 500MB or 2GiB, or none";
  }
  return CLI::AsSizeValue(true)(text);
}

void addMaxOutput(CLI::App& commandLine, std::optional<std::uint64_t>& maxOutput) {
  commandLine
      .add_option("--max-output", maxOutput,
                  "Stop when an output gets larger: bytes, a size like 500MB or 2GiB, or none. "
                  "Without it: 1 GiB or 1000 times LOG, whichever is larger")
      ->type_name("SIZE")
      ->transform(CLI::Validator(readSize, ""));
}

std::function<void()> declareView(CLI::App& commandLine) {
  auto options = std::make_shared<ViewOptions>();
  commandLine.add_option("LOG", options->log, "The profiling log")->required();
  CLI::Option* output =
      commandLine
          .add_option(
              "-o,--output", options->output,
              "Where to write, - for standard output. json: the document, otherwise written "
              "to LOG's name with .json in the current directory, unless something else than "
              "LOG's document is there. summary: a CSV listing, added to what FILE holds")
          ->type_name("FILE")
          ->check(checkOutput);
  commandLine
      .add_option("-r,--reader", options->reader,
                  "The reader: " + readerNames() + ", or the path of a library, with a /")
      ->type_name("NAME|PATH")
      ->capture_default_str()
      ->check(checkReader);
  commandLine
      .add_option("-l,--level", options->level,
                  "Take messages of a lower visibility level than this (summary)")
      ->type_name("N")
      ->capture_default_str()
      ->check(CLI::Range(kMinLevel, kMaxLevel));
  CLI::Option* payloads =
      commandLine.add_flag("--payloads", options->payloads,
                           "Write object payloads to files in the current directory (summary)");
  commandLine
      .add_flag("--payloads-anywhere", options->payloadsAnywhere,
                "Let payloads leave the current directory and go through symbolic links")
      ->needs(payloads);
  commandLine.add_flag("--force", options->force,
                       "Replace whatever has the name that the document gets without --output");
  addMaxOutput(commandLine, options->maxOutput);
  commandLine.add_flag("--header", options->header, "Print only the log's header (summary)")
      ->excludes(output)
      ->excludes(payloads);
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
