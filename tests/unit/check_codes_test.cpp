#include "analysis/check_codes.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/text_file.h"

namespace vyn::profiling {
namespace {

std::vector<std::string> rowsOfTable() {
  std::vector<std::string> rows;
  for (const CheckCodeEntry& entry : kCheckCodes) {
    const char* severity = entry.severity == Severity::kError ? "error" : "warning";
    rows.push_back(std::string("| ") + entry.name + " | " + severity + " | " + entry.meaning +
                   " | " + entry.remedy + " |");
  }
  return rows;
}

TEST(CheckCodes, AreAllInTheDocument) {
  std::vector<std::string> rows;
  std::istringstream page(test::readFile(VYN_CHECK_CODES_FILE));
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("| VYN")) {
      rows.push_back(line);
    }
  }
  EXPECT_EQ(rows, rowsOfTable());
}

TEST(CheckCodes, NamesAreInOrderAndTellTheSeverity) {
  std::string last;
  for (const CheckCodeEntry& entry : kCheckCodes) {
    const std::string name = entry.name;
    EXPECT_LT(last, name);
    EXPECT_EQ(name.substr(0, 4), entry.severity == Severity::kError ? "VYN1" : "VYN2");
    last = name;
  }
}

// A few, so that codes keep their meaning when one is added between others.
TEST(CheckCodes, AreFixed) {
  const auto nameOf = [](CheckCode code) { return std::string(entryOf(code).name); };
  EXPECT_EQ(nameOf(CheckCode::kEndsInFirstLength), "VYN101");
  EXPECT_EQ(nameOf(CheckCode::kUnexplained), "VYN119");
  EXPECT_EQ(nameOf(CheckCode::kTextsNotRead), "VYN204");
  EXPECT_EQ(nameOf(CheckCode::kUnknownValueType), "VYN214");
  EXPECT_EQ(nameOf(CheckCode::kMoreThanParent), "VYN226");
  EXPECT_EQ(nameOf(CheckCode::kSequenceRepeat), "VYN235");
  EXPECT_EQ(nameOf(CheckCode::kSeveralQueueWaits), "VYN243");
}

}  // namespace
}  // namespace vyn::profiling
