#include "logmaker/usage_report.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "host/spelling.h"

namespace vyn::logmaker {
namespace {

std::vector<std::string> optionNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* option : app.get_options()) {
    names.push_back(option->get_name());
  }
  return names;
}

std::string explainUnexpectedWord(const CLI::App& app, const std::string& word) {
  if (word.front() != '-') {
    return word + ": not expected here; a file is named with --output";
  }
  const std::string name = word.substr(0, word.find('='));
  const std::optional<std::string> meant = host::findMeant(name, optionNames(app));
  return name + ": no such option" + (meant ? " (did you mean " + *meant + "?)" : "");
}

// The words that the library could not place, in their order; an empty one says nothing.
std::optional<std::string> findUnexpectedWord(const CLI::App& app) {
  const std::vector<std::string> words = app.remaining();
  const auto found = std::find_if(words.begin(), words.end(), [](const std::string& word) {
    return !word.empty() && word != "-" && word != "--";
  });
  return found == words.end() ? std::nullopt : std::optional(*found);
}

// The library begins such a text with the option's name, a flag's without its dashes, and tells by
// a count how many values it got and wanted: one in every case, or none for a flag.
std::string explainValueCount(const CLI::App& app, const std::string& text) {
  const std::string name = text.substr(0, text.find_first_of(": "));
  if (const CLI::Option* flag = app.get_option_no_throw("--" + name)) {
    return flag->get_name() + " takes no value";
  }
  const CLI::Option* option = app.get_option_no_throw(name);
  if (option == nullptr) {
    return text;
  }
  return option->count() > 1 ? name + " is given more than once"
                             : name + " needs " + option->get_type_name() + " behind it";
}

}  // namespace

std::string explainUsage(const CLI::App& app, const CLI::ParseError& error) {
  if (const auto word = findUnexpectedWord(app)) {
    return explainUnexpectedWord(app, *word);
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    return explainValueCount(app, error.what());
  }
  return error.what();
}

}  // namespace vyn::logmaker
