#pragma once

#include <CLI/App.hpp>
#include <CLI/Error.hpp>
#include <functional>
#include <optional>
#include <string>

namespace vyn::cli {

/// The words in which the help says what goes with what; a required option needs none.
void setHelpLabels(CLI::App& app);

/// Ends a command line that `app` has not parsed to its end and returns the exit status: prints the
/// help or the version when that was asked for, else one line with what `explain` says is wrong,
/// and `helped`, the command whose help tells more. Throws files::FileError, files::ClosedPipe when
/// standard output cannot be written.
int endParsing(const CLI::App& app, const CLI::ParseError& error, const std::string& helped,
               const std::function<std::string()>& explain);

/// For the end of a line: " (did you mean --level?)". Empty when nothing is meant.
std::string didYouMean(const std::optional<std::string>& meant);

/// What to say of a word that looks like an option of `app` and is none, and what was probably
/// meant. Behind an equals sign it may have a value.
std::string explainUnknownOption(const CLI::App& app, const std::string& word);

/// What to say of an option that has more values than one or none, or of a flag that has one.
/// `isRepeated` is what is said of an option that is given again.
std::string explainValueCount(const CLI::App& app, const CLI::ParseError& error,
                              const std::string& isRepeated);

}  // namespace vyn::cli
