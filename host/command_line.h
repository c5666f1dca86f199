#pragma once

namespace vyn::host {

/// Parses the command line and runs the verb that it names. Returns the exit status: what the verb
/// set, cli::kDone for help and version, cli::kWrongUsage for wrong usage, which is reported.
/// Throws files::FileError when a verb fails.
int runCommandLine(int argc, char** argv);

}  // namespace vyn::host
