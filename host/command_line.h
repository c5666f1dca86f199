#pragma once

namespace vyn::host {

/// Parses the command line and runs the verb that it names. Returns the exit status: 0 for success
/// (help and version too), 2 for wrong usage, which is reported. Throws HostError when a verb
/// fails.
int runCommandLine(int argc, char** argv);

}  // namespace vyn::host
