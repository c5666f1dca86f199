#include <CLI/CLI.hpp>
#include <cstdint>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analysis/facts_collector.h"
#include "cli/program.h"
#include "files/file_error.h"
#include "files/standard_streams.h"
#include "host/info/facts_json.h"
#include "host/info/facts_text.h"
#include "host/input/foreign_format.h"
#include "host/input/log_diagnosis.h"
#include "host/input/log_reading.h"
#include "host/options/log_option.h"
#include "host/options/report_options.h"
#include "host/verbs/each_log.h"
#include "host/verbs/verb_table.h"

namespace vyn::host {
namespace {

struct InfoOptions {
  std::vector<std::string> logs;
  ReportFormat format = ReportFormat::kText;
  Progress progress = Progress::kShown;
};

std::optional<std::uint64_t> fileSizeOf(const LogFile& log) {
  return log.canBeReadAgain() ? std::optional(static_cast<std::uint64_t>(log.status.st_size))
                              : std::nullopt;
}

// What a file without a sound chunk holds instead.
std::optional<std::string> foreignFormatOf(const LogFile& log, const profiling::LogFacts& facts) {
  return facts.chunks.count == 0 && log.canBeReadAgain() ? recogniseForeignFormat(log.path)
                                                         : std::nullopt;
}

// Throws FileError when there is nothing to tell of, or the system does not give all of it.
profiling::LogFacts collectFacts(const LogFile& log, Progress progress) {
  profiling::FactsCollector collector;
  const profiling::WalkResult walk = walkLogFile(log, collector, progress);
  profiling::LogFacts facts = collector.facts(walk, fileSizeOf(log));
  if (walk.end == profiling::WalkEnd::kReadError) {
    throw files::FileError(log.name, kCannotBeRead);
  }
  if (const auto format = foreignFormatOf(log, facts)) {
    throw files::FileError(log.name, *format);
  }
  return facts;
}

int statusOf(const profiling::LogFacts& facts) {
  return facts.isDamaged() ? cli::kDamagedLog : cli::kDone;
}

int tellInText(const InfoOptions& options) {
  bool isFirst = true;
  return readEachLog(options.logs, [&](const LogFile& log) {
    const profiling::LogFacts facts = collectFacts(log, options.progress);
    std::cout << (isFirst ? "" : "\n");
    isFirst = false;
    printFacts(log.name, facts, std::cout);
    return statusOf(facts);
  });
}

int tellInJson(const InfoOptions& options) {
  FactsDocument document(std::cout);
  const int status = readEachLog(options.logs, [&](const LogFile& log) {
    const profiling::LogFacts facts = collectFacts(log, options.progress);
    document.add(log.name, facts);
    return statusOf(facts);
  });
  document.finish();
  return status;
}

void declareInfo(CLI::App& commandLine, int& exitStatus) {
  const auto options = std::make_shared<InfoOptions>();
  addLogsOption(commandLine, options->logs);
  addFormatOption(commandLine, options->format);
  addQuietOption(commandLine, options->progress);
  commandLine.final_callback([&exitStatus, options] {
    refuseRepeatedStandardInput(options->logs);
    exitStatus =
        options->format == ReportFormat::kJson ? tellInJson(*options) : tellInText(*options);
    files::finishStandardOutput();
  });
}

}  // namespace

const Verb kInfoVerb = {
    "info",
    "Tell what logs hold: counts, sizes, header, where the bytes go",
    "vyn-profile-viewer info run.log",
    declareInfo,
};

}  // namespace vyn::host
