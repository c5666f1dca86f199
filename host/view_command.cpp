#include "view_command.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

#include "document_check.h"
#include "host_error.h"
#include "log_diagnosis.h"
#include "log_file.h"
#include "option_scope.h"
#include "output_target.h"
#include "printable_text.h"
#include "reader_library.h"
#include "reader_names.h"
#include "reader_output.h"
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
  bool header = false;
};

// Runs a call of the reader, which may run out of memory. Everything that it throws is caught here,
// while its library is still loaded.
template <typename Call>
auto callReader(const LogFile& log, Call call) {
  try {
    return call();
  } catch (const HostError&) {
    throw;
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  } catch (const std::exception& error) {
    throw HostError(log.name, std::string("the reader failed (") + error.what() +
                                  "); check the log or give another --reader");
  }
  throw HostError(log.name, "not enough memory to read it; free some memory or read a shorter log");
}

ReaderPointer readLog(const ReaderLibrary& library, const LogFile& log, const ViewOptions& options,
                      const ReaderOutput& said) {
  return callReader(log, [&] {
    const auto level = static_cast<profiling::VisibilityLevel>(options.level);
    ReaderPointer reader = library.makeReader(log.path, level);
    if (!reader->readInputFile(options.payloads)) {
      throw HostError(log.name, diagnoseLog(log, said.lastLine()));
    }
    return reader;
  });
}

void generateOutput(const ReaderPointer& reader, const LogFile& log, const std::string& file,
                    const std::string& target, const ReaderOutput& said) {
  if (!callReader(log, [&] { return reader->generateOutput(file); })) {
    const std::string reason = said.lastLine();
    throw HostError(target,
                    "the reader could not write it and " +
                        (reason.empty() ? "does not say why; check the place" : "says: " + reason));
  }
}

std::string headerDetails(const ReaderLibrary& library, const LogFile& log,
                          const ViewOptions& options, const ReaderOutput& said) {
  const ReaderPointer reader = readLog(library, log, options, said);
  return callReader(log, [&] { return reader->getHeaderDetails(); });
}

void printHeader(const ReaderLibrary& library, const LogFile& log, const ViewOptions& options) {
  ReaderOutput said;
  const std::string details = headerDetails(library, log, options, said);
  if (details.empty()) {
    throw HostError(log.name, "the log holds no header; read it without --header");
  }
  said.passToStandardError();
  std::cout << printable(details, LineFeeds::kKept);
  finishStandardOutput();
}

void printOnly(const ReaderLibrary& library, const LogFile& log, const ViewOptions& options) {
  ReaderOutput said;
  {
    const ReaderPointer reader = readLog(library, log, options, said);
    generateOutput(reader, log, "", "standard output", said);
  }
  said.passOn();
  finishStandardOutput();
}

// The console text of other readers is part of what was asked for; of the JSON reader it is not.
void passOn(ReaderOutput& said, const OutputTarget& target, OutputKind kind) {
  if (target.isStream() && kind == OutputKind::kJsonDocument) {
    said.passToStandardError();
  } else {
    said.passOn();
  }
}

void writeTo(const std::string& name, const ReaderLibrary& library, const LogFile& log,
             const ViewOptions& options, OutputKind kind) {
  OutputTarget target(name, log,
                      kind == OutputKind::kJsonDocument ? OutputTarget::Content::kReplaced
                                                        : OutputTarget::Content::kContinued);
  const TempFile& work = target.workFile();
  ReaderOutput said;
  {
    const ReaderPointer reader = readLog(library, log, options, said);
    generateOutput(reader, log, work.path(), target.name(), said);
  }
  checkDocument(work.file(), kind, target.name());
  passOn(said, target, kind);
  finishStandardOutput();  // first: when it fails, a listing must not have grown
  target.deliver();
}

void view(const ViewOptions& options) {
  const LogFile log = findLog(options.log);
  const ReaderChoice reader = chooseReader(options.reader).value();
  const ReaderLibrary library(reader);
  if (options.header) {
    printHeader(library, log, options);
  } else if (!options.output.empty()) {
    writeTo(options.output, library, log, options, reader.output);
  } else if (reader.output == OutputKind::kJsonDocument && log.isStandardInput) {
    writeTo("-", library, log, options, reader.output);
  } else if (reader.output == OutputKind::kJsonDocument) {
    const std::string name = std::filesystem::path(log.path).filename().string() + ".json";
    writeTo(name, library, log, options, reader.output);
    reportLine("wrote " + name);
  } else {
    printOnly(library, log, options);
  }
}

// The texts with which validators refuse; empty when all is well.
std::string checkReader(const std::string& text) {
  return chooseReader(text) ? ""
                            : "no reader is named " + text + " (there are " + readerNames() +
                                  "; a library's path needs a /)";
}

std::string checkOutput(const std::string& text) {
  if (text.empty()) {
    return "the name of the output is empty";
  }
  const bool isOption = text.size() > 1 && text.front() == '-';
  return isOption ? "needs FILE before " + text + "; a file of this name is given as ./" + text
                  : "";
}

std::function<void()> declareView(CLI::App& commandLine) {
  auto options = std::make_shared<ViewOptions>();
  commandLine.add_option("LOG", options->log, "The profiling log; - is standard input")
      ->type_name("")
      ->required();
  CLI::Option* output =
      commandLine
          .add_option(
              "-o,--output", options->output,
              "Where to write, - for standard output. json: the document, otherwise written "
              "to LOG's name with .json in the current directory, or to standard output when LOG "
              "is -. summary: a CSV listing, "
              "added to what FILE holds")
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
  commandLine.add_flag("--header", options->header, "Print only the log's header (summary)")
      ->excludes(output)
      ->excludes(payloads);
  commandLine.final_callback([&commandLine, options] {
    refuseIgnoredOptions(commandLine, chooseReader(options->reader).value().output);
  });
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
