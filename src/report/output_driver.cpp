#include "report/output_driver.h"

#include <fstream>
#include <iomanip>
#include <locale>

#include "log/logger_registry.h"
#include "report/text_blocks.h"

namespace vyn::profiling {
namespace {

// Whatever locale the host has set, numbers come out without grouping.
void preparePlainNumbers(std::ostream& stream) {
  stream.imbue(std::locale::classic());
  stream << std::fixed << std::setprecision(0);
}

}  // namespace

bool writeOutputs(const Outputs& outputs, const std::string& csvFileName, std::ostream& console) {
  std::ofstream csv;
  if (!csvFileName.empty()) {
    csv.open(csvFileName, std::ios::out | std::ios::app);
  }
  if (!csv.good()) {
    log::log(log::kError, "Invalid output file: [%s]", csvFileName.c_str());
    return false;
  }
  TextBlocks text;
  std::ostream summary(&text);
  // Without this, a summary for which there is no memory would end early and pass for whole.
  summary.exceptions(std::ios::badbit);
  preparePlainNumbers(summary);
  outputs.printSummary(summary);
  if (csv.is_open()) {
    preparePlainNumbers(csv);
    outputs.writeCsv(csv);
  }
  text.writeTo(console);
  return true;
}

}  // namespace vyn::profiling
