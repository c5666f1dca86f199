#pragma once

#include <CLI/App.hpp>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace vyn::host {

/// What the command line of the verb "view" says.
struct ViewOptions {
  static constexpr int kMinLevel = -128;
  static constexpr int kMaxLevel = 127;

  std::string log;
  std::string output;  ///< empty: none was given
  std::string reader = "json";
  int level = kMaxLevel;
  bool payloads = false;
  bool payloadsAnywhere = false;
  bool header = false;
  bool force = false;
  std::optional<std::uint64_t> maxOutput;  ///< bytes; OutputLimit::kNone for none
};

/// Adds the options to the command line; parsing it fills what is returned. Options that the chosen
/// reader would ignore are refused.
std::shared_ptr<ViewOptions> declareViewOptions(CLI::App& commandLine);

}  // namespace vyn::host
