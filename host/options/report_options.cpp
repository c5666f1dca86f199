#include "host/options/report_options.h"

#include <CLI/CLI.hpp>
#include <map>
#include <string>

namespace vyn::host {

void addFormatOption(CLI::App& commandLine, ReportFormat& format) {
  static const std::map<std::string, ReportFormat> kFormats = {{"text", ReportFormat::kText},
                                                               {"json", ReportFormat::kJson}};
  commandLine
      .add_option_function<std::string>(
          "--format", [&format](const std::string& name) { format = kFormats.at(name); },
          "text, for people (the default), or json, for programs")
      ->type_name("FORMAT")
      ->check([](const std::string& name) {
        return kFormats.count(name) != 0 ? std::string()
                                         : "no format is named " + name + " (there are text, json)";
      });
}

void addQuietOption(CLI::App& commandLine, Progress& progress) {
  commandLine
      .add_flag_callback(
          "-q,--quiet", [&progress] { progress = Progress::kHidden; },
          "Do not tell on the terminal how far the work is")
      ->disable_flag_override();
}

}  // namespace vyn::host
