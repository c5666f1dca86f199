#include <fstream>
#include <iomanip>
#include <iostream>
#include <locale>

#include "core/vyn_profile_log_reader.h"
#include "log/logger_registry.h"
#include "report/text_blocks.h"

namespace vyn::profiling {
namespace {

// Titles are separated by a comma and a blank, the rows below them by a bare comma.
constexpr char kColumnTitles[] =
    "Msg Timestamp, Message, Time, Unit of Measurement, Timing Source, Event Level, Event "
    "Identifier";

// Whatever locale the host has set, numbers come out without grouping.
void preparePlainNumbers(std::ostream& stream) {
  stream.imbue(std::locale::classic());
  stream << std::fixed << std::setprecision(0);
}

}  // namespace

bool VynProfileLogReader::generateOutput(const std::string& outputFileName) {
  std::ofstream csv;
  if (!outputFileName.empty()) {
    csv.open(outputFileName, std::ios::out | std::ios::app);
  }
  if (!csv.good()) {
    log::log(log::kError, "Invalid output file: [%s]", outputFileName.c_str());
    return false;
  }
  const PayloadNames::Scope oneOutput(m_payloadNames);
  TextBlocks text;
  std::ostream summary(&text);
  // Without this, a summary for which there is no memory would end early and pass for whole.
  summary.exceptions(std::ios::badbit);
  preparePlainNumbers(summary);
  printSummary(summary);
  if (csv.is_open()) {
    preparePlainNumbers(csv);
    writeCsv(csv);
  }
  // Only now, so that a summary on the console says that the CSV file is complete.
  text.writeTo(std::cout);
  return true;
}

void VynProfileLogReader::printSummary(std::ostream& stream) {
  printHeaderDetails(stream);
  printStatisticsTitle(stream);
  printExecuteStatsOverall(stream);
  printExecuteStatsAverage(stream);
  printExecuteStatsMin(stream);
  printExecuteStatsMax(stream);
  printLibLoadStats(stream);
  printApplyBinarySectionStatsAverage(stream);
  printApplyBinarySectionStatsMin(stream);
  printApplyBinarySectionStatsMax(stream);
}

void VynProfileLogReader::writeCsv(std::ostream& stream) {
  writeCsvHeader(stream);
  stream << kColumnTitles << std::endl;
  writeInitCsv(stream);
  writeComposeGraphsCsv(stream);
  writeFinalizeCsv(stream);
  writeDeInitCsv(stream);
  writeExecuteCsv(stream);
  writeExecuteIpsCsv(stream);
  if (m_hasLibLoad) {
    writeLibLoadCsv(stream);
  }
  writeApplyBinarySectionCsv(stream);
}

}  // namespace vyn::profiling
