#pragma once

#include <CLI/App.hpp>

namespace vyn::host {

/// What to do with a log that turns out to be damaged.
struct KeepGoing {
  bool isAsked = false;   ///< take what is sound of it; else fail
  bool searches = false;  ///< also behind the damage
};

/// Adds --search to the command line; parsing it fills `searches`.
CLI::Option* addSearchOption(CLI::App& commandLine, bool& searches);

/// Adds --keep-going and --search, which needs it, to the command line.
void addKeepGoingOptions(CLI::App& commandLine, KeepGoing& keepGoing);

}  // namespace vyn::host
