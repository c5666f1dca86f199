#include "host/wrong_usage.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <system_error>

#include "cli/spelling.h"
#include "cli/usage_report.h"

namespace vyn::host {
namespace {

bool isFile(const std::string& name) {
  std::error_code error;
  return std::filesystem::exists(name, error);
}

// The first word that looks like an option and is none.
std::optional<std::string> findUnknownOption(const CLI::App& app) {
  const std::vector<std::string> unexpected = app.remaining(true);
  const auto found =
      std::find_if(unexpected.begin(), unexpected.end(),
                   [](const std::string& word) { return word.size() > 1 && word.front() == '-'; });
  if (found == unexpected.end() || *found == "--") {
    return std::nullopt;
  }
  return *found;
}

std::string explainUnknownOption(const CLI::App& verb, const std::string& word) {
  const std::string file = isFile(word) ? "; a log of this name is given as ./" + word : "";
  return cli::explainUnknownOption(verb, word) + file;
}

// A first word that is neither a verb nor a file is taken for a log; more words betray it.
std::optional<std::string> explainMisspeltVerb(const CLI::App& app, const std::string& word) {
  std::vector<std::string> verbs;
  for (const CLI::App* verb : app.get_subcommands({})) {
    verbs.push_back(verb->get_name());
  }
  const std::optional<std::string> meant = cli::findMeant(word, verbs);
  if (!meant || *meant == word || isFile(word)) {
    return std::nullopt;
  }
  return word + ": no such verb and no such file" + cli::didYouMean(meant);
}

// The first word of the command line that found no use.
std::string explainExtraWord(const CLI::App& app, const std::vector<std::string>& words) {
  const std::vector<std::string> unused = app.remaining(true);
  std::size_t first = words.size();
  for (const std::string& word : unused) {
    const auto last = std::find(words.rbegin(), words.rend(), word);
    if (word != "--" && last != words.rend()) {
      first = std::min<std::size_t>(first, words.rend() - last - 1);
    }
  }
  return "one log at a time; " + (first < words.size() ? words[first] : "a word") +
         " is one too many";
}

}  // namespace

std::string explainUsage(const CLI::App& app, const CLI::ParseError& error,
                         const std::vector<std::string>& words) {
  const std::vector<CLI::App*> parsed = app.get_subcommands();
  const CLI::App& verb = parsed.empty() ? app : *parsed.front();
  if (const auto option = findUnknownOption(app)) {
    return explainUnknownOption(verb, *option);
  }
  if (dynamic_cast<const CLI::ExtrasError*>(&error) != nullptr && !words.empty()) {
    const auto explanation = explainMisspeltVerb(app, words.front());
    return explanation ? *explanation : explainExtraWord(app, words);
  }
  if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr) {
    return cli::explainValueCount(verb, error, "is given twice");
  }
  return error.what();
}

}  // namespace vyn::host
