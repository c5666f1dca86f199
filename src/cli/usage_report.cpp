#include "cli/usage_report.h"

#include <CLI/Formatter.hpp>
#include <cstdio>
#include <sstream>
#include <vector>

#include "cli/program.h"
#include "cli/spelling.h"
#include "files/standard_streams.h"

namespace vyn::cli {
namespace {

std::vector<std::string> optionNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) {
      names.push_back("--" + name);
    }
  }
  return names;
}

}  // namespace

void setHelpLabels(CLI::App& app) {
  app.get_formatter()->label("REQUIRED", "");
  app.get_formatter()->label("Excludes", "not with");
  app.get_formatter()->label("Needs", "with");
}

// The library's own report is two lines; a script that collects errors wants one.
int endParsing(const CLI::App& app, const CLI::ParseError& error, const std::string& helped,
               const std::function<std::string()>& explain) {
  if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
    std::ostringstream text;
    app.exit(error, text);
    std::fputs(text.str().c_str(), stdout);
    files::finishStandardOutput();
    return kDone;
  }
  reportLine(app.get_name(), explain() + "; see " + helped + " --help");
  return kWrongUsage;
}

std::string didYouMean(const std::optional<std::string>& meant) {
  return meant ? " (did you mean " + *meant + "?)" : "";
}

std::string explainUnknownOption(const CLI::App& app, const std::string& word) {
  const std::string name = word.substr(0, word.find('='));
  return name + ": no such option" + didYouMean(findMeant(name, optionNames(app)));
}

// The library begins its text with the option's name, a flag's without its dashes, and tells by a
// count how many values it got and wanted: one in every case, or none for a flag.
std::string explainValueCount(const CLI::App& app, const CLI::ParseError& error,
                              const std::string& isRepeated) {
  std::string text = error.what();
  std::string name = text.substr(0, text.find_first_of(": "));
  if (!name.starts_with('-')) {
    name = "--" + name;
  }
  const CLI::Option* option = app.get_option_no_throw(name);
  if (option == nullptr) {
    return text;
  }
  if (option->get_expected_max() == 0) {
    return name + " takes no value";
  }
  return option->count() > 1 ? name + " " + isRepeated
                             : name + " needs " + option->get_type_name() + " behind it";
}

}  // namespace vyn::cli
