// The order of a whole output, and what happens to its file.

#include <gmock/gmock.h>

#include <sstream>

#include "log/logger_registry.h"
#include "support/captured_output.h"
#include "support/foreign_locale.h"
#include "support/log_event.h"
#include "support/open_reader.h"

namespace vyn::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Output : public testing::Test {
 protected:
  TempFolder m_folder;
  OpenReader m_reader{"/data/run.log"};
};

const std::string kEmptyCsv =
    "input log file location, /data/run.log\n"
    "vyn-profile-viewer version, <version>\n"
    "vyn-net-run version, \n"
    "Backend version, \n"
    "Msg Timestamp, Message, Time, Unit of Measurement, Timing Source, Event Level, Event "
    "Identifier\n"
    "0,INIT,0,US,NETRUN,ROOT,null\n"
    "0,COMPOSE GRAPHS,0,US,NETRUN,ROOT,null\n"
    "0,DE-INIT,0,US,NETRUN,ROOT,null\n";

TEST_F(Output, EmptyNamePrintsTheSummaryAlone) {
  const std::string printed = printedBy([&] { EXPECT_TRUE(m_reader.generateOutput("")); });
  EXPECT_THAT(printed, StartsWith("\nVyn Init/Prepare"));
  EXPECT_THAT(printed, HasSubstr("Execute Stats (Max):"));
}

// The lines that name a block of statistics.
std::vector<std::string> headingsOf(const std::string& summary) {
  std::istringstream lines(summary);
  std::vector<std::string> headings;
  for (std::string line; std::getline(lines, line);) {
    if (line.find(" Stat") != std::string::npos) {
      headings.push_back(line);
    }
  }
  return headings;
}

TEST_F(Output, BlocksStandInTheirOrder) {
  m_reader.m_hasExecuteIps = true;
  m_reader.m_executeIpsEvents = {cycles("duration", 1), cycles("count", 1)};
  m_reader.m_hasLibLoad = true;
  m_reader.m_libLoadEvents = {cycles("x", 1)};
  m_reader.m_hasApplyBinarySection = true;
  const std::string printed = printedBy([&] { EXPECT_TRUE(m_reader.generateOutput("")); });
  EXPECT_THAT(headingsOf(printed),
              ElementsAre("Vyn Init/Prepare/Finalize/De-Init/Execute/Lib-Load Statistics:",
                          "Init Stats:", "Compose Graphs Stats:", "Finalize Stats:",
                          "De-Init Stats:", "Execute Stats (Overall):", "Execute Stats (Average):",
                          "Execute Stats (Min):", "Execute Stats (Max):", "Dynamic Lib Load Stats:",
                          "ApplyBinarySection Stats (Average):", "ApplyBinarySection Stats (Min):",
                          "ApplyBinarySection Stats (Max):"));
}

TEST_F(Output, SecondListingFollowsTheFirstInTheFile) {
  const std::string path = m_folder.path("out.csv");
  printedBy([&] {
    EXPECT_TRUE(m_reader.generateOutput(path));
    EXPECT_TRUE(m_reader.generateOutput(path));
  });
  EXPECT_EQ(masked(readFile(path)), kEmptyCsv + kEmptyCsv);
}

TEST_F(Output, FileThatCannotBeOpenedFailsAndPrintsNothing) {
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kError));
  const std::string path = m_folder.path("missing/out.csv");
  const std::string printed = printedBy([&] { EXPECT_FALSE(m_reader.generateOutput(path)); });
  log::terminateLogging();
  EXPECT_EQ(printed, "<ms> [ ERROR ] Invalid output file: [" + path + "]\n");
}

TEST_F(Output, ErrorsWhileWritingAreNotNoticed) {
  const std::string printed = printedBy([&] { EXPECT_TRUE(m_reader.generateOutput("/dev/full")); });
  EXPECT_THAT(printed, HasSubstr("Init Stats:"));
}

TEST_F(Output, LibLoadRowNeedsItsFlag) {
  m_reader.m_libLoadEvents = {cycles("x", 99)};
  printedBy([&] { m_reader.generateOutput(m_folder.path("without.csv")); });
  m_reader.m_hasLibLoad = true;
  printedBy([&] { m_reader.generateOutput(m_folder.path("with.csv")); });
  EXPECT_THAT(readFile(m_folder.path("without.csv")), Not(HasSubstr("DLOPEN")));
  EXPECT_THAT(readFile(m_folder.path("with.csv")), HasSubstr("0,DLOPEN LATENCY,99,US"));
}

TEST_F(Output, NullTextLeavesItAndPrintsNothing) {
  m_reader.m_deInitEvents = {text("x", "")};
  m_reader.m_deInitEvents[0].value.text = nullptr;
  EXPECT_EQ(printedBy([&] { EXPECT_THROW(m_reader.generateOutput(""), std::logic_error); }), "");
}

TEST_F(Output, NumbersArePlainInAGroupingLocale) {
  m_reader.m_deInitTime = 1234567;
  m_reader.m_hasExecuteIps = true;
  m_reader.m_executeIpsEvents = {cycles("duration", 1000), cycles("count", 2000)};
  const GlobalGroupingLocale grouping;
  const std::string printed =
      printedBy([&] { EXPECT_TRUE(m_reader.generateOutput(m_folder.path("out.csv"))); });
  EXPECT_THAT(printed, HasSubstr("NetRun: 1234567 us"));
  EXPECT_THAT(printed, HasSubstr("time): 2000000.0000 inf/sec"));
  EXPECT_THAT(readFile(m_folder.path("out.csv")), HasSubstr("0,DE-INIT,1234567,US"));
  EXPECT_THAT(readFile(m_folder.path("out.csv")), HasSubstr(",2000000.000000,INF/SEC"));
}

}  // namespace
}  // namespace vyn::test
