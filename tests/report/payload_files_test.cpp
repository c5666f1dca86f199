// The files that receive the payloads of OBJECT events.

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <sstream>

#include "log/logger_registry.h"
#include "support/captured_output.h"
#include "support/log_event.h"
#include "support/open_reader.h"
#include "support/records.h"

namespace vyn::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class PayloadFiles : public testing::Test {
 protected:
  std::string content(const std::string& name) { return readFile(m_folder.path(name)); }
  std::vector<std::string> files() { return m_folder.files(); }

  void expectSecondFile(const std::string& name, const std::string& secondName) {
    expectSecondFile(name, name, secondName);
  }

  void expectSecondFile(const std::string& name, const std::string& firstName,
                        const std::string& secondName) {
    // By relative names, for the folder's own name has a dot.
    const auto previous = std::filesystem::current_path();
    std::filesystem::current_path(m_folder.path(""));
    m_reader.writeObjectPayload(object(name, "first"));
    m_reader.writeObjectPayload(object(name, "second"));
    std::filesystem::current_path(previous);
    EXPECT_EQ(content(firstName), "first");
    EXPECT_EQ(content(secondName), "second");
  }

  TempFolder m_folder;
  OpenReader m_reader;
};

TEST_F(PayloadFiles, HoldTheBytesUnchanged) {
  const std::string bytes("a\0\n\xff", 4);
  m_reader.writeObjectPayload(object(m_folder.path("x.bin"), bytes));
  EXPECT_EQ(content("x.bin"), bytes);
}

TEST_F(PayloadFiles, EmptyPayloadIsAnEmptyFile) {
  m_reader.writeObjectPayload(object(m_folder.path("x.bin"), ""));
  EXPECT_EQ(content("x.bin"), "");
}

TEST_F(PayloadFiles, NumbersGoBeforeTheExtension) {
  expectSecondFile("report.bin", "report_1.bin");
  m_reader.writeObjectPayload(object(m_folder.path("report.bin"), "third"));
  EXPECT_EQ(content("report_2.bin"), "third");
}

TEST_F(PayloadFiles, NumberOfANameWithoutExtensionGoesToItsEnd) {
  expectSecondFile("blob", "blob_1");
}

TEST_F(PayloadFiles, NumberGoesBeforeTheDotThatANameEndsIn) {
  expectSecondFile("blob.", "blob_1.");
}

TEST_F(PayloadFiles, DotOfAFolderCountsLikeAnyOther) {
  std::filesystem::create_directory(m_folder.path("v1.2"));
  m_reader.writeObjectPayload(object(m_folder.path("v1.2/blob"), "first"));
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kError));
  const std::string printed =
      printedBy([&] { m_reader.writeObjectPayload(object(m_folder.path("v1.2/blob"), "second")); });
  log::terminateLogging();
  EXPECT_EQ(printed,
            "<ms> [ ERROR ] Invalid output fileName: [" + m_folder.path("v1_1.2/blob") + "]\n");
}

TEST_F(PayloadFiles, FirstFreeNumberIsTaken) {
  m_folder.add("x.bin", "");
  m_folder.add("x_2.bin", "");
  m_reader.writeObjectPayload(object(m_folder.path("x.bin"), "new"));
  EXPECT_EQ(content("x_1.bin"), "new");
}

TEST_F(PayloadFiles, FileThatCannotBeReadIsTakenForFree) {
  const std::string path = m_folder.add("x.bin", "something longer");
  std::filesystem::permissions(path, std::filesystem::perms::owner_write);
  std::filesystem::permissions(m_folder.path(""), std::filesystem::perms::all);
  const uid_t user = geteuid();
  const bool isRoot = user == 0;  // who may read everything
  if (isRoot) {
    constexpr uid_t kNobody = 65534;
    ASSERT_EQ(chown(path.c_str(), kNobody, static_cast<gid_t>(-1)), 0);
    ASSERT_EQ(seteuid(kNobody), 0);
  }
  m_reader.writeObjectPayload(object(path, "new"));
  if (isRoot) {
    ASSERT_EQ(seteuid(user), 0);
  }
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
  EXPECT_EQ(content("x.bin"), "new");
  EXPECT_THAT(files(), ElementsAre("x.bin"));
}

TEST_F(PayloadFiles, NameEndsBeforeItsFirstZeroByte) {
  const std::string rest("\0.x", 3);
  expectSecondFile("a" + rest, "a", "a_1");
  expectSecondFile("b.bin" + rest, "b.bin", "b_1.bin");
  m_reader.writeObjectPayload(object(rest, "bytes"));
  EXPECT_FALSE(std::filesystem::exists(".x"));
}

TEST_F(PayloadFiles, PipesAndDevicesAreTakenAndNeverOpened) {
  const std::string pipe = m_folder.path("pipe.bin");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0), 0);  // that not even its owner may read
  m_reader.writeObjectPayload(object(pipe, "bytes"));
  EXPECT_EQ(content("pipe_1.bin"), "bytes");
  std::filesystem::create_symlink("/dev/zero", m_folder.path("zero.bin"));
  m_reader.writeObjectPayload(object(m_folder.path("zero.bin"), "bytes"));
  EXPECT_EQ(content("zero_1.bin"), "bytes");
}

TEST_F(PayloadFiles, FoldersAreTaken) {
  std::filesystem::create_directory(m_folder.path("x.bin"));
  m_reader.writeObjectPayload(object(m_folder.path("x.bin"), "bytes"));
  EXPECT_EQ(content("x_1.bin"), "bytes");
}

TEST_F(PayloadFiles, NumbersGoOnPastTheFilesOfOthers) {
  m_folder.add("x_3.bin", "other");
  for (const char* bytes : {"0", "1", "2", "4", "5"}) {
    m_reader.writeObjectPayload(object(m_folder.path("x.bin"), bytes));
  }
  EXPECT_EQ(content("x_2.bin"), "2");
  EXPECT_EQ(content("x_3.bin"), "other");
  EXPECT_EQ(content("x_4.bin"), "4");
  EXPECT_EQ(content("x_5.bin"), "5");
}

TEST_F(PayloadFiles, EachOutputCountsAfresh) {
  m_reader.m_writeObjectPayloads = true;
  m_reader.m_deInitEvents = {object(m_folder.path("x.bin"), "x"),
                             object(m_folder.path("x.bin"), "y")};
  for (int round = 0; round < 2; ++round) {
    printedBy([&] { EXPECT_TRUE(m_reader.generateOutput("")); });
    EXPECT_EQ(content("x_1.bin"), "y");
    std::filesystem::remove(m_folder.path("x_1.bin"));
    std::filesystem::remove(m_folder.path("x.bin"));
  }
}

TEST_F(PayloadFiles, EachListingByItselfCountsAfresh) {
  m_reader.m_writeObjectPayloads = true;
  const auto list = [&](const std::string& bytes) {
    std::ostringstream stream;
    m_reader.printEvents(stream, {object(m_folder.path("x.bin"), bytes)});
  };
  list("0");
  list("1");
  list("2");
  std::filesystem::remove(m_folder.path("x_1.bin"));
  list("3");
  EXPECT_EQ(content("x_1.bin"), "3");
  EXPECT_THAT(files(), UnorderedElementsAre("x.bin", "x_1.bin", "x_2.bin"));
}

TEST_F(PayloadFiles, NamelessPayloadIsNotWritten) {
  const auto previous = std::filesystem::current_path();
  std::filesystem::current_path(m_folder.path(""));
  m_reader.writeObjectPayload(object("", "bytes"));
  std::filesystem::current_path(previous);
  EXPECT_THAT(files(), IsEmpty());
}

TEST_F(PayloadFiles, ListingGoesOnAfterAFileThatCannotBeMade) {
  m_reader.m_writeObjectPayloads = true;
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kError));
  std::ostringstream stream;
  const std::string printed = printedBy([&] {
    m_reader.printEvents(stream, {object(m_folder.path("no/x.bin"), "x"), cycles("a", 1)});
  });
  log::terminateLogging();
  EXPECT_EQ(printed,
            "<ms> [ ERROR ] Invalid output fileName: [" + m_folder.path("no/x.bin") + "]\n");
  EXPECT_EQ(stream.str(), "    Backend (a): 1 cycles\n");
}

TEST_F(PayloadFiles, AreWrittenByTheListingOnlyWhenAskedFor) {
  std::ostringstream stream;
  const auto events = std::vector<profiling::EventNode>{
      object(m_folder.path("x.bin"), "x", {object(m_folder.path("y.bin"), "y")})};
  m_reader.printEvents(stream, events);
  EXPECT_THAT(files(), IsEmpty());
  m_reader.m_writeObjectPayloads = true;
  m_reader.printEvents(stream, events);
  EXPECT_THAT(files(), UnorderedElementsAre("x.bin", "y.bin"));
  EXPECT_EQ(stream.str(), "");
}

TEST_F(PayloadFiles, AveragePassWritesEachOnceAndOnceMoreForEachChild) {
  m_reader.m_writeObjectPayloads = true;
  m_reader.m_executeAverage = {figure("net0", {.duration = 1})};
  m_reader.m_executeGroups = {
      {"net0",
       {execution({.duration = 1, .timestamp = 1},
                  {object(m_folder.path("x.bin"), "x",
                          {cycles("a", 1), cycles("b", 1), cycles("c", 1)})}),
        execution({.duration = 1, .timestamp = 2}, {object(m_folder.path("y.bin"), "y")})}}};
  std::ostringstream stream;
  m_reader.printExecuteStatsAverage(stream);
  EXPECT_THAT(files(), UnorderedElementsAre("x.bin", "x_1.bin", "x_2.bin", "x_3.bin", "y.bin"));
}

TEST_F(PayloadFiles, AveragePassCountsEveryChildEvenWithOmittedDetails) {
  m_reader.m_writeObjectPayloads = true;
  m_reader.m_omitExecuteDetails = true;
  m_reader.m_executeAverage = {figure("net0", {.duration = 1})};
  const Events children(9, cycles("a", 1));
  m_reader.m_executeGroups = {
      {"net0", {execution({.duration = 1}, {object(m_folder.path("x.bin"), "x", children)})}}};
  std::ostringstream stream;
  m_reader.printExecuteStatsAverage(stream);
  EXPECT_THAT(files(), SizeIs(1 + 9));
  EXPECT_THAT(files(), Contains("x_9.bin"));
}

TEST_F(PayloadFiles, AreWrittenOnlyWhenTheReadAskedForThem) {
  OpenReader reader(m_folder.add("run.log", ""));
  reader.m_writeObjectPayloads = true;
  EXPECT_TRUE(reader.readInputFile(false));
  EXPECT_FALSE(reader.m_writeObjectPayloads);
}

TEST_F(PayloadFiles, AveragePassIsSkippedWithoutAverages) {
  m_reader.m_writeObjectPayloads = true;
  m_reader.m_executeGroups = {
      {"net0", {execution({.duration = 1}, {object(m_folder.path("x.bin"), "x")})}}};
  std::ostringstream stream;
  m_reader.printExecuteStatsAverage(stream);
  EXPECT_THAT(files(), IsEmpty());
}

}  // namespace
}  // namespace vyn::test
