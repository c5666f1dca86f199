#pragma once

#include <CLI/App.hpp>
#include <memory>
#include <string>

#include "output_options.h"

namespace vyn::host {

/// What the command line of the verb "view" says.
struct ViewOptions {
  static constexpr int kMinLevel = -128;
  static constexpr int kMaxLevel = 127;

  std::string log;
  OutputOptions output;
  std::string reader = "json";
  int level = kMaxLevel;
  bool payloads = false;
  bool payloadsAnywhere = false;
  bool header = false;
};

/// Adds the options to the command line; parsing it fills what is returned. Options that the chosen
/// reader would ignore are refused.
std::shared_ptr<ViewOptions> declareViewOptions(CLI::App& commandLine);

}  // namespace vyn::host
