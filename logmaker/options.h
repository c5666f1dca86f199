#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>

#include "logmaker/scenario.h"

namespace vyn::logmaker {

struct Options {
  std::string output;                ///< "-" is standard output
  std::string record;                ///< likewise; empty when none is wanted
  std::uint64_t size = 0;            ///< bytes; 0 when the executions decide
  std::uint64_t chunkSize = 64'000;  ///< bytes
  ScenarioOptions scenario;
};

/// Adds the program's options; parsing stores them and throws CLI::ParseError on wrong usage.
void addOptions(CLI::App& app, Options& options);

/// What is wrong with a command line that `app` could not parse, in words for its user.
std::string explainUsage(const CLI::App& app, const CLI::ParseError& error);

}  // namespace vyn::logmaker
