#include "command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/version/profile_viewer_version.h"
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

void setLabels(CLI::App& app) {
  app.get_formatter()->label("REQUIRED", "");
  app.get_formatter()->label("Excludes", "not with");
  app.get_formatter()->label("Needs", "with");
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
  setLabels(app);
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

// "help" and "version" are words that other programs know.
bool isWordForOption(const std::vector<std::string>& words) {
  std::error_code error;
  return words.size() == 1 && (words.front() == "help" || words.front() == "version") &&
         !std::filesystem::exists(words.front(), error);
}

}  // namespace

int runCommandLine(int argc, char** argv) {
  CLI::App app("Reads the profiling logs of vyn-net-run. Without a verb: view.",
               "vyn-profile-viewer");
  setLabels(app);
  addVersion(app);
  app.footer(examples());
  const std::vector<Command> commands = declareVerbs(app);
  const std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
  if (isWordForOption(words)) {
    reportLine(words.front() + ": no such verb and no such file (did you mean --" + words.front() +
               "?)");
    return kWrongUsage;
  }
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
