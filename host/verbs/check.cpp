#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "analysis/log_check.h"
#include "cli/program.h"
#include "files/standard_streams.h"
#include "host/check/findings_json.h"
#include "host/check/findings_text.h"
#include "host/input/log_reading.h"
#include "host/options/log_option.h"
#include "host/options/report_options.h"
#include "host/verbs/each_log.h"
#include "host/verbs/verb_table.h"

namespace vyn::host {
namespace {

using profiling::Findings;
using profiling::Severity;

struct CheckOptions {
  std::vector<std::string> logs;
  ReportFormat format = ReportFormat::kText;
  Progress progress = Progress::kShown;
  bool isStrict = false;
};

Findings findingsOf(const LogFile& log, Progress progress) {
  profiling::LogCheck check;
  return check.finish(walkLogFile(log, check, progress));
}

bool isBad(const Findings& findings, bool isStrict) {
  return findings.count(Severity::kError) > 0 ||
         (isStrict && findings.count(Severity::kWarning) > 0);
}

// Hands what was found in each log, and the log's name, to `print`.
template <typename Print>
int checkEachLog(const CheckOptions& options, const Print& print) {
  return readEachLog(options.logs, [&](const LogFile& log) {
    const Findings findings = findingsOf(log, options.progress);
    print(findings, log.name);
    return isBad(findings, options.isStrict) ? cli::kDamagedLog : cli::kDone;
  });
}

int checkAsText(const CheckOptions& options) {
  return checkEachLog(options, [](const Findings& findings, const std::string& log) {
    printFindings(findings, log, std::cout);
  });
}

int checkAsJson(const CheckOptions& options) {
  FindingsJson document(std::cout);
  const int status =
      checkEachLog(options, [&document](const Findings& findings, const std::string& log) {
        document.add(findings, log);
      });
  document.finish();
  return status;
}

int checkLogs(const CheckOptions& options) {
  const int status =
      options.format == ReportFormat::kJson ? checkAsJson(options) : checkAsText(options);
  files::finishStandardOutput();
  return status;
}

void declareCheck(CLI::App& commandLine, int& exitStatus) {
  const auto options = std::make_shared<CheckOptions>();
  addLogsOption(commandLine, options->logs);
  commandLine.add_flag("--strict", options->isStrict, "Warnings too make the exit status 3")
      ->disable_flag_override();
  addFormatOption(commandLine, options->format);
  addQuietOption(commandLine, options->progress);
  commandLine.final_callback([options, &exitStatus] {
    refuseRepeatedStandardInput(options->logs);
    exitStatus = checkLogs(*options);
  });
}

}  // namespace

const Verb kCheckVerb = {
    "check",
    "Find what is wrong with logs: damage, and what makes figures doubtful",
    "vyn-profile-viewer check run.log --strict",
    declareCheck,
};

}  // namespace vyn::host
