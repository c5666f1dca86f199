#pragma once

#include <CLI/App.hpp>

namespace vyn::host {

/// One thing that the program does, named by the first word of the command line.
struct Verb {
  const char* name;
  const char* purpose;  ///< one line of the help
  const char* example;  ///< a command line to copy, for the help

  /// Adds the verb's options to its part of the command line, and itself as what is run when they
  /// have been parsed and fit together. It then throws files::FileError on failure, and
  /// CLI::ParseError before it has done anything when the options do not fit. One that is done sets
  /// the program's exit status to what it found of the log; it is kDone before.
  void (*declare)(CLI::App& commandLine, int& exitStatus);
};

}  // namespace vyn::host
