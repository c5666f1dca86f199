#include "host/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/version/profile_viewer_version.h"
#include "cli/program.h"
#include "cli/usage_report.h"
#include "host/help_page.h"
#include "host/report_line.h"
#include "host/verbs/verb_table.h"
#include "host/wrong_usage.h"

namespace vyn::host {
namespace {

bool isVerb(std::string_view word) {
  return std::any_of(kVerbs.begin(), kVerbs.end(),
                     [word](const Verb* verb) { return word == verb->name; });
}

bool isOptionOfTheProgram(std::string_view word) {
  return word == "-h" || word == "--help" || word == "-V" || word == "--version";
}

std::vector<std::string> withVerb(std::vector<std::string> words) {
  if (words.empty() || !(isVerb(words.front()) || isOptionOfTheProgram(words.front()))) {
    words.insert(words.begin(), kDefaultVerb.name);
  }
  return words;
}

constexpr char kExitStatuses[] =
    "Exit status: 0 done; 1 failed; 2 wrong usage; 3 done, but something in the log was damaged "
    "or\n"
    "lost; 4 done, but what was measured misses what was asked for.";

std::string examples() {
  std::string text = "Examples:\n";
  for (const Verb* verb : kVerbs) {
    text += std::string("  ") + verb->example + "\n";
  }
  return text + "A log that is named like a verb is given as ./" + kDefaultVerb.name + ".\n\n" +
         kExitStatuses;
}

void addVersion(CLI::App& app) {
  app.set_version_flag("-V,--version",
                       std::string(kProgramName) + " " + profiling::kProfileViewerVersion);
}

// The verb that the command line names runs when that has been parsed.
void declareVerbs(CLI::App& app, int& exitStatus) {
  for (const Verb* verb : kVerbs) {
    CLI::App* commandLine = app.add_subcommand(verb->name, verb->purpose);
    commandLine->footer(std::string("Example:\n  ") + verb->example + "\n\n" + kExitStatuses);
    addVersion(*commandLine);
    verb->declare(*commandLine, exitStatus);
  }
  app.formatter(std::make_shared<HelpPage>(*app.get_subcommand(kDefaultVerb.name)));
  cli::setHelpLabels(app);
  app.require_subcommand(1);
}

// "help" and "version" are words that other programs know.
bool isWordForOption(const std::vector<std::string>& words) {
  std::error_code error;
  return words.size() == 1 && (words.front() == "help" || words.front() == "version") &&
         !std::filesystem::exists(words.front(), error);
}

}  // namespace

int runCommandLine(int argc, char** argv) {
  CLI::App app("Reads the profiling logs of vyn-net-run. Without a verb: view.", kProgramName);
  cli::setHelpLabels(app);
  addVersion(app);
  app.footer(examples());
  int exitStatus = cli::kDone;
  declareVerbs(app, exitStatus);
  const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
  if (isWordForOption(words)) {
    reportLine(words.front() + ": no such verb and no such file (did you mean --" + words.front() +
               "?)");
    return cli::kWrongUsage;
  }
  std::vector<std::string> parsed = withVerb(words);
  std::reverse(parsed.begin(), parsed.end());  // the library takes words from the back
  try {
    app.parse(parsed);
  } catch (const CLI::ParseError& error) {
    const std::string verb = !words.empty() && isVerb(words.front()) ? " " + words.front() : "";
    return cli::endParsing(app, error, kProgramName + verb,
                           [&] { return explainUsage(app, error, words); });
  }
  return exitStatus;
}

}  // namespace vyn::host
