#include "host/host_fixture.h"

namespace vyn::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::StartsWith;
using testing::UnorderedElementsAre;

class ReaderLibraryTest : public HostTest {
 protected:
  ReaderLibraryTest() { write("run.log", smallLog()); }
};

TEST_F(ReaderLibraryTest, APathIsTakenAsItStands) {
  EXPECT_THAT(run({"run.log", "-r", VYN_JSON_PLUGIN, "-o", "a.json"}), SucceedsQuietly());
  EXPECT_THAT(run({"run.log", "-r", "json", "-o", "b.json"}), SucceedsQuietly());
  EXPECT_EQ(read("a.json"), read("b.json"));
}

TEST_F(ReaderLibraryTest, AMissingPathIsNamed) {
  EXPECT_THAT(run({"run.log", "-r", "./none.so"}),
              FailsWith("./none.so: no such reader library; check the name"));
}

TEST_F(ReaderLibraryTest, AMissingLibraryTellsWhereItWasSought) {
  fs::create_directory(directory() / "bin");
  fs::copy(VYN_PROFILE_VIEWER, directory() / "bin");
  ProgramCall lonely = call({"run.log"});
  lonely.words.front() = directory() / "bin/vyn-profile-viewer";
  const std::string root = directory();
  EXPECT_THAT(runProgram(lonely),
              FailsWith("libVynJsonProfilingReader.so: reader library not found in " + root +
                        "/bin, " + root + "/lib, " + root +
                        "/lib/vyn-profile-viewer; install it there or give its path with "
                        "--reader"));
}

TEST_F(ReaderLibraryTest, IsFoundInTheInstallDirectory) {
  fs::create_directories(directory() / "bin");
  fs::create_directories(directory() / "lib/vyn-profile-viewer");
  fs::copy(VYN_PROFILE_VIEWER, directory() / "bin");
  fs::copy(VYN_JSON_PLUGIN, directory() / "lib/vyn-profile-viewer");
  ProgramCall installed = call({"run.log", "-o", "out.json"});
  installed.words.front() = directory() / "bin/vyn-profile-viewer";
  EXPECT_THAT(runProgram(installed), SucceedsQuietly());
}

TEST_F(ReaderLibraryTest, WhatIsNoLibraryIsRefused) {
  const ProgramResult result = run({"run.log", "-r", "./run.log"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_THAT(result.errors,
              StartsWith("vyn-profile-viewer: ./run.log: cannot be loaded as a reader library ("));
}

TEST_F(ReaderLibraryTest, BothExportsAreNeeded) {
  EXPECT_THAT(run({"run.log", "-r", VYN_NO_EXPORTS_READER}),
              FailsWith(std::string(VYN_NO_EXPORTS_READER) +
                        ": not a reader library, for it does not export createReader; give "
                        "another --reader"));
  EXPECT_THAT(run({"run.log", "-r", VYN_HALF_EXPORTS_READER}),
              FailsWith(std::string(VYN_HALF_EXPORTS_READER) +
                        ": not a reader library, for it does not export deleteReader; give "
                        "another --reader"));
}

class MisbehavingReaderTest : public HostTest {
 protected:
  // The log's name is the behaviour; the content may be anything sound.
  ProgramResult runReader(const std::string& behaviour, const std::string& library) const {
    write(behaviour, smallLog());
    return run({behaviour, "-r", library, "-o", "out"});
  }

  void expectFailure(const std::string& behaviour, const std::string& line) const {
    const ProgramResult result = runReader(behaviour, VYN_MISBEHAVING_READER);
    EXPECT_THAT(result, FailsWith(line));
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(names(), UnorderedElementsAre("destroyed", behaviour));
    fs::remove(directory() / "destroyed");
    fs::remove(directory() / behaviour);
  }
};

TEST_F(MisbehavingReaderTest, OutOfMemoryIsSaid) {
  for (const std::string behaviour : {"bad_alloc", "length_error"}) {
    expectFailure(behaviour, behaviour +
                                 ": not enough memory to read it; free some memory or read "
                                 "a shorter log");
  }
}

TEST_F(MisbehavingReaderTest, AnErrorOfTheReadersOwnOutlivesItsLibrary) {
  expectFailure("own_error",
                "own_error: the reader failed (own error); check the log or give another "
                "--reader");
}

constexpr char kFailed[] = ": the reader failed; check the log or give another --reader";

TEST_F(MisbehavingReaderTest, WhateverAnOperationThrowsIsOneLine) {
  for (const std::string behaviour :
       {"throws_asked", "throws_reading", "throws_writing", "throws_deleted"}) {
    expectFailure(behaviour, behaviour + kFailed);
  }
}

TEST_F(MisbehavingReaderTest, WhateverIsThrownInsteadOfAReaderIsOneLine) {
  EXPECT_THAT(runReader("throws_made", VYN_MISBEHAVING_READER),
              FailsWith(std::string("throws_made") + kFailed));
  EXPECT_THAT(names(), ElementsAre("throws_made"));
}

TEST_F(MisbehavingReaderTest, WhateverIsThrownInsteadOfAHeaderIsOneLine) {
  write("throws_header", smallLog());
  const ProgramResult result = run({"throws_header", "-r", VYN_MISBEHAVING_READER, "--header"});
  EXPECT_EQ(result.exitStatus, 1);
  EXPECT_EQ(result.errors, ownLine(std::string("throws_header") + kFailed));
  EXPECT_THAT(names(), UnorderedElementsAre("destroyed", "throws_header"));
}

TEST_F(MisbehavingReaderTest, AReaderThatIsNotValidIsRefused) {
  expectFailure("is_invalid", std::string(VYN_MISBEHAVING_READER) +
                                  ": made a reader that is not valid; give another --reader");
}

TEST_F(MisbehavingReaderTest, RefusingASoundLogIsSaid) {
  expectFailure("refuses",
                "refuses: the reader refused it though its chunks are sound; it does not say why: "
                "free some memory or give another --reader");
}

TEST_F(MisbehavingReaderTest, WhatItSaidLastIsWovenIntoTheLine) {
  expectFailure("refuses_loudly",
                "refuses_loudly: the reader refused it though its chunks are sound; it says: it is "
                "\\x1b[31mred");
  expectFailure("fails_to_write_loudly",
                "out: the reader could not write it and says: no room here");
}

TEST_F(MisbehavingReaderTest, WhatItPrintsGoesToStandardOutputInOrder) {
  const ProgramResult result = runReader("prints", VYN_MISBEHAVING_READER);
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_EQ(result.output, "read\nwritten\n");
}

TEST_F(MisbehavingReaderTest, WithoutAScratchDirectoryMemoryHoldsWhatItPrints) {
  write("prints", smallLog());
  ProgramCall homeless = call({"prints", "-r", VYN_MISBEHAVING_READER, "-o", "out"});
  homeless.environment = {"TMPDIR=/none"};
  const ProgramResult result = runProgram(homeless);
  EXPECT_THAT(result, SucceedsQuietly());
  EXPECT_EQ(result.output, "read\nwritten\n");
}

TEST_F(MisbehavingReaderTest, MayTakeEveryOption) {
  write("fine", smallLog());
  EXPECT_THAT(run({"fine", "-r", VYN_MISBEHAVING_READER, "-l", "3", "--payloads", "-o", "out"}),
              SucceedsQuietly());
  EXPECT_EQ(run({"fine", "-r", VYN_MISBEHAVING_READER, "--header"}).output, "header\n");
}

TEST_F(MisbehavingReaderTest, FailingToWriteIsSaid) {
  expectFailure("fails_to_write",
                "out: the reader could not write it and does not say why; check the place");
}

TEST_F(MisbehavingReaderTest, MakingNoReaderIsSaid) {
  EXPECT_THAT(
      runReader("none", VYN_MISBEHAVING_READER),
      FailsWith(std::string(VYN_MISBEHAVING_READER) + ": made no reader; give another --reader"));
}

TEST_F(MisbehavingReaderTest, ADocumentThatStopsEarlyIsNoticed) {
  fs::copy(VYN_MISBEHAVING_READER, directory() / "libVynJsonProfilingReader.so");
  EXPECT_THAT(runReader("stops_early", "./libVynJsonProfilingReader.so"),
              FailsWith("out: the output was cut short; check the disk and try again"));
  EXPECT_THAT(names(), ElementsAre("destroyed", "libVynJsonProfilingReader.so", "stops_early"));
}

TEST_F(MisbehavingReaderTest, AnotherReadersOutputMayEndAsItLikes) {
  EXPECT_THAT(runReader("fine", VYN_MISBEHAVING_READER), SucceedsQuietly());
  EXPECT_EQ(read("out"), "text");
}

}  // namespace
}  // namespace vyn::test
