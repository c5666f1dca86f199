// A derived reader that replaces the two listings of events sees every call of them.

#include <gmock/gmock.h>

#include "report/every_step.h"
#include "support/captured_output.h"
#include "support/open_reader.h"
#include "support/records.h"

namespace vyn::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

std::string listed(const std::vector<profiling::EventNode>& events) {
  std::string text;
  for (const auto& event : events) {
    text += " " + event.identifier + "=" + std::to_string(event.value.uint64);
    if (!event.children.empty()) {
      text += " {" + listed(event.children) + " }";
    }
  }
  return text;
}

/// Lists events in a way of its own, with a number that shows the notation of the stream.
class ReplacedListings : public OpenReader {
 public:
  using OpenReader::OpenReader;

  void printEvents(std::ostream& stream, std::vector<profiling::EventNode> events) override {
    stream << "printed:" << listed(events) << " (" << 2.75 << ")\n";
  }

  void writeEventsCsv(std::ostream& stream, std::vector<profiling::EventNode> events,
                      std::uint64_t timestamp, const std::string& message) override {
    stream << "written: " << timestamp << " " << message << listed(events) << " (" << 2.75 << ")\n";
  }
};

class ReplacedListingsTest : public testing::Test {
 protected:
  std::string printed(ReplacedListings& reader) {
    return printedBy([&] { EXPECT_TRUE(reader.generateOutput(m_folder.path("out.csv"))); });
  }
  std::string written() { return readFile(m_folder.path("out.csv")); }

  TempFolder m_folder;
};

TEST_F(ReplacedListingsTest, StandWhereTheEventsWouldStand) {
  ReplacedListings reader(m_folder.add("run.log", everyStepLog()));
  ASSERT_TRUE(reader.readInputFile(false));
  reader.m_hasApplyBinarySection = true;
  EXPECT_THAT(printed(reader), EndsWith(R"(Init Stats:
-----------
    NetRun: 21 us
printed: load=17 (3)

Compose Graphs Stats:
--------------
    NetRun: 7 us

Finalize Stats:
---------------
Graph 0 (A):
    NetRun: 9 us
printed: fuse=10 { fold=11 } (3)

De-Init Stats:
--------------
    NetRun: 26 us
printed: free=27 (3)

Execute Stats (Overall):
------------------------
    NetRun IPS (includes IO and misc. time): 50.0000 inf/sec 

Execute Stats (Average):
------------------------
Total Inference Time: 
---------------------
Graph 0 (A):
    NetRun: 25 us
printed: x=2 { y=4 } (2.7500)

Graph 1 (B):
    NetRun: 15 us
printed: z=16 (2.7500)

Execute Stats (Min):
------------------------
Total Inference Time: 
---------------------
Graph 0 (A):
    NetRun: 20 us
printed: x=3 (2.7500)

Graph 1 (B):
    NetRun: 15 us
printed: z=16 (2.7500)

Execute Stats (Max):
------------------------
Total Inference Time: 
---------------------
Graph 0 (A):
    NetRun: 30 us
printed: x=1 { y=4 } (2.7500)

Graph 1 (B):
    NetRun: 15 us
printed: z=16 (2.7500)

Dynamic Lib Load Stats:
------------------------
    Backend Latency: 3 us

ApplyBinarySection Stats (Average):
-----------------------------------
Graph 0 (A):
    NetRun: 20 us
printed: patch=20 (2.7500)

ApplyBinarySection Stats (Min):
-----------------------------------
Graph 0 (A):
    NetRun: 19 us
printed: patch=20 (2.7500)

ApplyBinarySection Stats (Max):
-----------------------------------
Graph 0 (A):
    NetRun: 22 us
printed: (2.7500)

)"));
  EXPECT_THAT(written(), EndsWith(R"(Event Identifier
4,INIT,21,US,NETRUN,ROOT,null
written: 4 INIT load=17 (3)
6,COMPOSE GRAPHS,7,US,NETRUN,ROOT,null
8,FINALIZE,9,US,NETRUN,ROOT,Graph 0: A
written: 8 FINALIZE fuse=10 { fold=11 } (3)
25,DE-INIT,26,US,NETRUN,ROOT,null
written: 25 DE-INIT free=27 (3)
12,EXECUTE,30,US,NETRUN,ROOT,Graph 0: A
written: 12 EXECUTE x=1 { y=4 } (3)
13,EXECUTE,20,US,NETRUN,ROOT,Graph 0: A
written: 13 EXECUTE x=3 (3)
14,EXECUTE,15,US,NETRUN,ROOT,Graph 1: B
written: 14 EXECUTE z=16 (3)
23,EXECUTE IPS,50.000000,INF/SEC,NETRUN,ROOT,null
1,DLOPEN LATENCY,3,US,NETRUN,ROOT,null
18,APPLY BINARY SECTION,19,US,NETRUN,ROOT,Graph 0: A
written: 18 APPLYBINARY patch=20 (2.750000)
21,APPLY BINARY SECTION,22,US,NETRUN,ROOT,Graph 0: A
written: 21 APPLYBINARY (2.750000)
)"));
}

TEST_F(ReplacedListingsTest, AreCalledWithoutEventsForDeInitAlone) {
  ReplacedListings reader;
  const std::string summary = printed(reader);
  EXPECT_EQ(summary.find("printed:"), summary.rfind("printed:"));
  EXPECT_THAT(summary,
              HasSubstr("De-Init Stats:\n--------------\n    NetRun: 0 us\nprinted: (3)\n"));
  EXPECT_THAT(written(), EndsWith("\n0,INIT,0,US,NETRUN,ROOT,null\n"
                                  "0,COMPOSE GRAPHS,0,US,NETRUN,ROOT,null\n"
                                  "0,DE-INIT,0,US,NETRUN,ROOT,null\nwritten: 0 DE-INIT (3)\n"));
}

TEST_F(ReplacedListingsTest, AreHandedTheEventsOfTheBinaryWithoutInitEvents) {
  ReplacedListings reader(m_folder.add(
      "run.log",
      logWith({createFromBinary({.duration = 2, .timestamp = 1}, {number("parse", 3)})})));
  ASSERT_TRUE(reader.readInputFile(false));
  EXPECT_THAT(printed(reader), HasSubstr("    NetRun: 2 us\nprinted: parse=3 (3)\n"));
  EXPECT_THAT(written(), HasSubstr("1,INIT,2,US,NETRUN,ROOT,null\nwritten: 1 INIT parse=3 (3)\n"));
}

TEST_F(ReplacedListingsTest, AreNotCalledForFinalizeStepsWithoutTheirFlag) {
  ReplacedListings reader;
  reader.m_finalizeGroups = {figure("A", {.duration = 1, .timestamp = 2})};
  EXPECT_THAT(printed(reader), HasSubstr("Graph 0 (A):\n    NetRun: 1 us\n\n"));
  EXPECT_THAT(written(), Not(HasSubstr("2 FINALIZE")));
}

TEST_F(ReplacedListingsTest, AreNotCalledForExecutionsWhoseDetailsAreOmitted) {
  ReplacedListings reader(m_folder.add("run.log", everyStepLog()));
  ASSERT_TRUE(reader.readInputFile(false));
  reader.m_omitExecuteDetails = true;
  EXPECT_THAT(printed(reader), Not(HasSubstr("printed: x")));
  EXPECT_THAT(written(), HasSubstr("written: 13 EXECUTE x=3"));
}

}  // namespace
}  // namespace vyn::test
