// The order of a whole output, and what happens to its file.

#include <gtest/gtest.h>

#include <locale>

#include "log/logger_registry.h"
#include "report/event_nodes.h"
#include "support/captured_output.h"
#include "support/open_reader.h"

namespace vyn::test {
namespace {

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
  EXPECT_EQ(printed.rfind("\nVyn Init/Prepare", 0), 0U);
  EXPECT_NE(printed.find("Execute Stats (Max):"), std::string::npos);
}

TEST_F(Output, BlocksStandInTheirOrder) {
  m_reader.m_hasExecuteIps = true;
  m_reader.m_executeIpsEvents = {node("duration", 1), node("count", 1)};
  m_reader.m_hasLibLoad = true;
  m_reader.m_libLoadEvents = {node("x", 1)};
  m_reader.m_hasApplyBinarySection = true;
  const std::string printed = printedBy([&] { EXPECT_TRUE(m_reader.generateOutput("")); });
  std::size_t position = 0;
  for (const char* heading :
       {"Vyn Init/", "Init Stats:", "Compose Graphs", "Finalize Stats", "De-Init Stats",
        "Execute Stats (Overall)", "Execute Stats (Average)", "Execute Stats (Min)",
        "Execute Stats (Max)", "Dynamic Lib Load", "Section Stats (Average)", "Section Stats (Min)",
        "Section Stats (Max)"}) {
    const std::size_t found = printed.find(heading, position);
    ASSERT_NE(found, std::string::npos) << heading;
    position = found;
  }
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
  ASSERT_TRUE(log::initializeLogging(nullptr, 1));
  const std::string path = m_folder.path("missing/out.csv");
  const std::string printed = printedBy([&] { EXPECT_FALSE(m_reader.generateOutput(path)); });
  log::terminateLogging();
  EXPECT_EQ(printed, "<ms> [ ERROR ] Invalid output file: [" + path + "]\n");
}

TEST_F(Output, ErrorsWhileWritingAreNotNoticed) {
  const std::string printed = printedBy([&] { EXPECT_TRUE(m_reader.generateOutput("/dev/full")); });
  EXPECT_NE(printed.find("Init Stats:"), std::string::npos);
}

TEST_F(Output, LibLoadRowNeedsItsFlag) {
  m_reader.m_libLoadEvents = {node("x", 99)};
  printedBy([&] { m_reader.generateOutput(m_folder.path("without.csv")); });
  m_reader.m_hasLibLoad = true;
  printedBy([&] { m_reader.generateOutput(m_folder.path("with.csv")); });
  EXPECT_EQ(readFile(m_folder.path("without.csv")).find("DLOPEN"), std::string::npos);
  EXPECT_NE(readFile(m_folder.path("with.csv")).find("0,DLOPEN LATENCY,99,US"), std::string::npos);
}

TEST_F(Output, NullTextLeavesItAndPrintsNothing) {
  m_reader.m_deInitEvents = {node("x", 0)};
  m_reader.m_deInitEvents[0].dataType = profiling::EventDataType::STRING;
  m_reader.m_deInitEvents[0].value.text = nullptr;
  EXPECT_EQ(printedBy([&] { EXPECT_THROW(m_reader.generateOutput(""), std::logic_error); }), "");
}

TEST_F(Output, NumbersArePlainInAGroupingLocale) {
  class Grouping : public std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
  };
  m_reader.m_deInitTime = 1234567;
  m_reader.m_hasExecuteIps = true;
  m_reader.m_executeIpsEvents = {node("duration", 1000), node("count", 2000)};
  const std::locale previous = std::locale::global(std::locale(std::locale(), new Grouping));
  const std::string printed =
      printedBy([&] { EXPECT_TRUE(m_reader.generateOutput(m_folder.path("out.csv"))); });
  std::locale::global(previous);
  EXPECT_NE(printed.find("NetRun: 1234567 us"), std::string::npos);
  EXPECT_NE(printed.find("time): 2000000.0000 inf/sec"), std::string::npos);
  EXPECT_NE(readFile(m_folder.path("out.csv")).find("0,DE-INIT,1234567,US"), std::string::npos);
  EXPECT_NE(readFile(m_folder.path("out.csv")).find(",2000000.000000,INF/SEC"), std::string::npos);
}

}  // namespace
}  // namespace vyn::test
