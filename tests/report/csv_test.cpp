// Rows and event lines of the CSV listing.

#include <gmock/gmock.h>

#include <sstream>

#include "support/foreign_locale.h"
#include "support/log_event.h"
#include "support/open_reader.h"
#include "support/records.h"
#include "support/text_file.h"

namespace vyn::test {
namespace {

using testing::HasSubstr;

class Csv : public testing::Test {
 protected:
  template <typename Write>
  std::string written(Write write) {
    std::ostringstream stream;
    (m_reader.*write)(stream);
    return masked(stream.str());
  }

  std::string eventLines(const std::vector<profiling::EventNode>& events) {
    std::ostringstream stream;
    m_reader.writeEventsCsv(stream, events, 42, "EXECUTE");
    return stream.str();
  }

  OpenReader m_reader{"/data/run.log"};
};

TEST_F(Csv, HeaderLinesKeepTheirLabelsWithoutValues) {
  EXPECT_EQ(written(&OpenReader::writeCsvHeader),
            "input log file location, /data/run.log\n"
            "vyn-profile-viewer version, <version>\n"
            "vyn-net-run version, \n"
            "Backend version, \n");
  m_reader.m_netRunVersion = "2.0";
  m_reader.m_backendVersion = "1.9";
  EXPECT_THAT(written(&OpenReader::writeCsvHeader),
              HasSubstr("run version, 2.0\nBackend version, 1.9\n"));
}

TEST_F(Csv, StepsThatDidNotOccurHaveRowsOfZeros) {
  EXPECT_EQ(written(&OpenReader::writeInitCsv), "0,INIT,0,US,NETRUN,ROOT,null\n");
  EXPECT_EQ(written(&OpenReader::writeComposeGraphsCsv),
            "0,COMPOSE GRAPHS,0,US,NETRUN,ROOT,null\n");
  EXPECT_EQ(written(&OpenReader::writeDeInitCsv), "0,DE-INIT,0,US,NETRUN,ROOT,null\n");
  EXPECT_EQ(written(&OpenReader::writeFinalizeCsv), "");
  EXPECT_EQ(written(&OpenReader::writeExecuteCsv), "");
  EXPECT_EQ(written(&OpenReader::writeApplyBinarySectionCsv), "");
}

TEST_F(Csv, InitListsInitEventsBeforeThoseOfTheBinary) {
  m_reader.m_initTimestamp = 3;
  m_reader.m_initTime = 4;
  m_reader.m_initEvents = {bytes("load", 5)};
  m_reader.m_createFromBinaryEvents = {microseconds("parse", 6)};
  const std::string row = "3,INIT,4,US,NETRUN,ROOT,null\n";
  EXPECT_EQ(written(&OpenReader::writeInitCsv), row);
  m_reader.m_hasCreateFromBinaryEvents = true;
  EXPECT_EQ(written(&OpenReader::writeInitCsv), row + "3,INIT,6,US,BACKEND,ROOT,parse\n");
  m_reader.m_hasInitEvents = true;
  EXPECT_EQ(written(&OpenReader::writeInitCsv), row + "3,INIT,5,BYTES,BACKEND,ROOT,load\n");
}

TEST_F(Csv, FinalizeListsEventsOnlyUnderItsFlag) {
  m_reader.m_finalizeGroups = {figure("net0", {.duration = 6, .timestamp = 1}, {cycles("x", 9)})};
  const std::string row = "1,FINALIZE,6,US,NETRUN,ROOT,Graph 0: net0\n";
  EXPECT_EQ(written(&OpenReader::writeFinalizeCsv), row);
  m_reader.m_hasFinalizeEvents = true;
  EXPECT_EQ(written(&OpenReader::writeFinalizeCsv), row + "1,FINALIZE,9,CYCLES,BACKEND,ROOT,x\n");
}

TEST_F(Csv, DeInitAlwaysListsItsEvents) {
  m_reader.m_deInitTimestamp = 8;
  m_reader.m_deInitTime = 9;
  m_reader.m_deInitEvents = {cycles("x", 1)};
  EXPECT_EQ(written(&OpenReader::writeDeInitCsv),
            "8,DE-INIT,9,US,NETRUN,ROOT,null\n8,DE-INIT,1,CYCLES,BACKEND,ROOT,x\n");
}

TEST_F(Csv, ExecutionsAreCountedPastGraphsWithoutAny) {
  m_reader.m_executeGroups = {{"empty", {}},
                              {"net,1",
                               {execution({.duration = 5, .timestamp = 1}, {cycles("x", 9)}),
                                execution({.duration = 6, .timestamp = 2})}}};
  EXPECT_EQ(written(&OpenReader::writeExecuteCsv),
            "1,EXECUTE,5,US,NETRUN,ROOT,Graph 1: net,1\n"
            "1,EXECUTE,9,CYCLES,BACKEND,ROOT,x\n"
            "2,EXECUTE,6,US,NETRUN,ROOT,Graph 1: net,1\n");
}

TEST_F(Csv, AppliedBinarySectionsSpellTheirStepInTwoWays) {
  m_reader.m_applyBinarySectionGroups = {
      {"net0", {execution({.duration = 5, .timestamp = 1}, {cycles("x", 9)})}}};
  EXPECT_EQ(written(&OpenReader::writeApplyBinarySectionCsv),
            "1,APPLY BINARY SECTION,5,US,NETRUN,ROOT,Graph 0: net0\n"
            "1,APPLYBINARY,9,CYCLES,BACKEND,ROOT,x\n");
}

TEST_F(Csv, InferencesPerSecondHaveSixDecimals) {
  m_reader.m_executeIpsTimestamp = 7;
  m_reader.m_executeIpsEvents = {cycles("duration", 2000000), cycles("count", 100)};
  EXPECT_EQ(written(&OpenReader::writeExecuteIpsCsv), "");
  m_reader.m_hasExecuteIps = true;
  EXPECT_EQ(written(&OpenReader::writeExecuteIpsCsv),
            "7,EXECUTE IPS,50.000000,INF/SEC,NETRUN,ROOT,null\n");
  m_reader.m_executeIpsEvents.pop_back();
  EXPECT_EQ(written(&OpenReader::writeExecuteIpsCsv), "");
}

TEST_F(Csv, LibLoadNeedsAnEvent) {
  m_reader.m_libLoadTimestamp = 5;
  EXPECT_EQ(written(&OpenReader::writeLibLoadCsv), "");
  m_reader.m_libLoadEvents = {bytes("x", 99)};
  EXPECT_EQ(written(&OpenReader::writeLibLoadCsv), "5,DLOPEN LATENCY,99,US,NETRUN,ROOT,null\n");
}

TEST_F(Csv, EventLinesListChildrenButNoGrandchildrenAndNoObjects) {
  EXPECT_EQ(
      eventLines({ofUnit(EventUnit::OBJECT, number("o", 1, {count("c", 2)})),
                  ofUnit(EventUnit::NONE,
                         number("a", 3,
                                {ofUnit(EventUnit::BACKEND, number("b", 4, {cycles("deep", 5)})),
                                 ofUnit(EventUnit::OBJECT, number("p", 6))}))}),
      "42,EXECUTE,2,COUNT,BACKEND,SUB-EVENT,c\n"
      "42,EXECUTE,3,NONE,BACKEND,ROOT,a\n"
      "42,EXECUTE,4,US,BACKEND,SUB-EVENT,b\n");
}

TEST_F(Csv, NoEventsAreNoLines) { EXPECT_EQ(eventLines({}), ""); }

TEST_F(Csv, ValuesOfOtherTypesAndCommasStandAsTheyAre) {
  profiling::EventNode unknown = cycles("a,b", 1);
  unknown.dataType = profiling::EventDataType{0x0999};
  profiling::EventNode truth = cycles("t", 1);
  truth.dataType = profiling::EventDataType::BOOL_8;
  EXPECT_EQ(eventLines({unknown, truth}),
            "42,EXECUTE,,CYCLES,BACKEND,ROOT,a,b\n42,EXECUTE,1,CYCLES,BACKEND,ROOT,t\n");
}

TEST_F(Csv, TimeStampsArePlainInAStreamThatGroups) {
  std::ostringstream stream;
  stream.imbue(groupingLocale());
  m_reader.writeEventsCsv(stream, {cycles("x", 1234567)}, 7654321, "EXECUTE");
  EXPECT_EQ(stream.str(), "7654321,EXECUTE,1234567,CYCLES,BACKEND,ROOT,x\n");
}

}  // namespace
}  // namespace vyn::test
