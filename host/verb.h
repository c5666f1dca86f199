#pragma once

#include <CLI/App.hpp>
#include <functional>

namespace vyn::host {

/// One thing that the program does, named by the first word of the command line.
struct Verb {
  const char* name;
  const char* purpose;  ///< one line of the help
  const char* example;  ///< a command line to copy, for the help

  /// Adds the verb's options to its part of the command line and returns what is to be run when
  /// they have been parsed. What it runs throws HostError on failure.
  std::function<void()> (*declare)(CLI::App& commandLine);
};

}  // namespace vyn::host
