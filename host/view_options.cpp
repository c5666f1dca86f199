#include "view_options.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <system_error>

#include "log_option.h"
#include "option_scope.h"
#include "reader_names.h"
#include "spelling.h"

namespace vyn::host {
namespace {

// The texts with which validators refuse; empty when all is well.
std::string checkReader(const std::string& text) {
  if (chooseReader(text)) {
    return "";
  }
  const auto meant = findMeant(CLI::detail::to_lower(text), readerNameList());
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
    "with "
    ".json in the current directory, unless something else than LOG's document is there, or to "
    "standard output when LOG is -. summary: a CSV listing, added to what FILE holds";

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

}  // namespace

std::shared_ptr<ViewOptions> declareViewOptions(CLI::App& commandLine) {
  auto options = std::make_shared<ViewOptions>();
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
  });
  return options;
}

}  // namespace vyn::host
