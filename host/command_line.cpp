#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/version/profile_viewer_version.h"
#include "export_command.h"
#include "help_page.h"
#include "host_error.h"
#include "standard_streams.h"
#include "usage_report.h"
#include "verb.h"
#include "view_command.h"

namespace vyn::host {
namespace {

constexpr int kWrongUsage = 2;

const std::array kVerbs = {&kViewVerb, &kExportVerb};

// The verb that a command line without one means.
constexpr const Verb* kDefaultVerb = &kViewVerb;

bool isVerb(std::string_view word) {
  return std::any_of(kVerbs.begin(), kVerbs.end(),
                     [word](const Verb* verb) { return word == verb->name; });
}

bool isTopLevelOption(std::string_view word) {
  return word == "-h" || word == "--help" || word == "-V" || word == "--version";
}

std::vector<std::string> withVerb(std::vector<std::string> words) {
  if (words.empty() || !(isVerb(words.front()) || isTopLevelOption(words.front()))) {
    words.insert(words.begin(), kDefaultVerb->name);
  }
  return words;
}

std::string examples() {
  std::string text = "Examples:\n";
  for (const Verb* verb : kVerbs) {
    text += std::string("  ") + verb->example + "\n";
  }
  return text + "A log that is named like a verb is given as ./" + kDefaultVerb->name + ".";
}

// A parsed verb and what it is to run.
struct Command {
  CLI::App* commandLine;
  std::function<void()> run;
};

void addVersion(CLI::App& app) {
  app.set_version_flag("-V,--version",
                       std::string("vyn-profile-viewer ") + profiling::kProfileViewerVersion);
}

std::vector<Command> declareVerbs(CLI::App& app) {
  std::vector<Command> commands;
  for (const Verb* verb : kVerbs) {
    CLI::App* commandLine = app.add_subcommand(verb->name, verb->purpose);
    commandLine->footer(std::string("Example:\n  ") + verb->example);
    addVersion(*commandLine);
    commands.push_back({commandLine, verb->declare(*commandLine)});
  }
  app.formatter(std::make_shared<HelpPage>(*app.get_subcommand(kDefaultVerb->name)));
  app.require_subcommand(1);
  return commands;
}

// The library's own report is two lines; a script that collects errors wants one.
int reportUsage(const CLI::App& app, const CLI::ParseError& error,
                const std::vector<std::string>& words) {
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
    const int status = app.exit(error);
    finishStandardOutput();
    return status;
  }
  reportLine(explainUsage(app, error, words) + "; see vyn-profile-viewer --help");
  return kWrongUsage;
}

}  // namespace

int runCommandLine(int argc, char** argv) {
  CLI::App app("Reads the profiling logs of vyn-net-run. Without a verb: view.",
               "vyn-profile-viewer");
  addVersion(app);
  app.footer(examples());
  const std::vector<Command> commands = declareVerbs(app);
  const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
  std::vector<std::string> parsed = withVerb(words);
  std::reverse(parsed.begin(), parsed.end());  // the library takes words from the back
  try {
    app.parse(parsed);
  } catch (const CLI::ParseError& error) {
    return reportUsage(app, error, words);
  }
  for (const Command& command : commands) {
    if (command.commandLine->parsed()) {
      command.run();
    }
  }
  return 0;
}

}  // namespace vyn::host
