#include "host/options/keep_going_options.h"

#include <CLI/CLI.hpp>

namespace vyn::host {

CLI::Option* addSearchOption(CLI::App& commandLine, bool& searches) {
  return commandLine.add_flag("--search", searches, "Look for sound chunks behind the damage, too")
      ->disable_flag_override();
}

void addKeepGoingOptions(CLI::App& commandLine, KeepGoing& keepGoing) {
  CLI::Option* option =
      commandLine
          .add_flag("--keep-going", keepGoing.isAsked,
                    "Of a damaged log, write what stands before the damage; exit status 3")
          ->disable_flag_override();
  addSearchOption(commandLine, keepGoing.searches)->needs(option);
}

}  // namespace vyn::host
