#pragma once

#include <CLI/App.hpp>
#include <cstdint>
#include <optional>
#include <string>

#include "host/input/log_file.h"
#include "host/output/output_limit.h"

namespace vyn::host {

/// What a command line says of its output; several verbs take these options.
struct OutputOptions {
  std::string name;  ///< empty: none was given
  bool force = false;
  std::optional<std::uint64_t> maxSize;  ///< bytes; OutputLimit::kNone for none

  OutputLimit limitFor(const LogFile& log) const {
    return maxSize ? OutputLimit(*maxSize) : OutputLimit::standardFor(log);
  }
};

/// Adds --output alone to the command line; parsing it fills `name`. `purpose` is its help.
CLI::Option* addOutputOption(CLI::App& commandLine, std::string& name, const std::string& purpose);

/// Adds the options to the command line; parsing it fills `options`. `purpose` is the help of the
/// option --output, which is returned.
CLI::Option* addOutputOptions(CLI::App& commandLine, OutputOptions& options,
                              const std::string& purpose);

}  // namespace vyn::host
