// Calls of the system that fail, by a library loaded in front of all others (fault_shim.cpp).

#include <cerrno>
#include <csignal>

#include "host/host_fixture.h"
#include "support/json_log.h"
#include "support/shared_log.h"

namespace vyn::test {
namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;

// Different names of one file in the current folder.
std::vector<std::string> spellings(const std::string& name, std::size_t count) {
  std::vector<std::string> names(count);
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t bits = i + 1; bits > 0; bits /= 2) {
      names[i] += bits % 2 == 0 ? "./" : ".//";
    }
    names[i] += name;
  }
  return names;
}

constexpr int kOneByte = 0;  // reads and writes of one byte instead of an error
constexpr int kSecondRead = 2;

struct Fault {
  std::string call;
  std::string path;
  int error;
  int first = 1;
};

class FaultTest : public HostTest {
 protected:
  FaultTest() {
    write("run.log", smallLog());
    write("out.json", "old");
  }

  ProgramResult runWith(const Fault& fault, std::vector<std::string> arguments) const {
    ProgramCall faulted = call(std::move(arguments));
    faulted.environment.insert(
        faulted.environment.end(),
        {std::string("LD_PRELOAD=") + VYN_FAULT_SHIM, "ASAN_OPTIONS=verify_asan_link_order=0",
         "VYN_FAULT_CALL=" + fault.call, "VYN_FAULT_PATH=" + fault.path,
         "VYN_FAULT_FIRST=" + std::to_string(fault.first),
         "VYN_FAULT_ERROR=" + std::to_string(fault.error)});
    return runProgram(faulted);
  }

  std::string document() const {
    EXPECT_THAT(run({"run.log", "-o", "expected.json"}), SucceedsQuietly());
    std::string text = read("expected.json");
    std::filesystem::remove(directory() / "expected.json");
    return text;
  }

  void expectOldOutput() const {
    EXPECT_EQ(read("out.json"), "old");
    EXPECT_THAT(names(), ElementsAre("out.json", "run.log"));
  }
};

TEST_F(FaultTest, ReadsOfOneByteGiveTheSameDocument) {
  EXPECT_THAT(runWith({"read", "run.log", kOneByte}, {"run.log", "-o", "out.json"}),
              SucceedsQuietly());
  EXPECT_EQ(read("out.json"), document());
}

TEST_F(FaultTest, InterruptedReadsGiveTheSameDocument) {
  EXPECT_THAT(runWith({"read", "run.log", EINTR}, {"run.log", "-o", "out.json"}),
              SucceedsQuietly());
  EXPECT_EQ(read("out.json"), document());
}

TEST_F(FaultTest, WritesOfOneByteGiveTheSameDocument) {
  EXPECT_THAT(runWith({"write", "out.json", kOneByte}, {"run.log", "-o", "out.json"}),
              SucceedsQuietly());
  EXPECT_EQ(read("out.json"), document());
}

TEST_F(FaultTest, InterruptedWritesGiveTheSameDocument) {
  EXPECT_THAT(runWith({"write", "out.json", EINTR}, {"run.log", "-o", "out.json"}),
              SucceedsQuietly());
  EXPECT_EQ(read("out.json"), document());
}

TEST_F(FaultTest, ReadErrorsOfTheLogAreNamed) {
  const std::string line = "run.log: cannot be read whole; check the disk, or copy the log again";
  for (const std::string reader : {"json", "summary"}) {
    EXPECT_THAT(
        runWith({"read", "run.log", EIO}, {"run.log", "-o", "out.json", "--reader", reader}),
        FailsWith(line));
    expectOldOutput();
  }
}

TEST_F(FaultTest, OfALogThatCannotBeReadWholeNothingIsTold) {
  const ProgramResult result = runWith({"read", "run.log", EIO}, {"info", "run.log"});
  EXPECT_THAT(result,
              FailsWith("run.log: cannot be read whole; check the disk, or copy the log again"));
  EXPECT_EQ(result.output, "");
}

TEST_F(FaultTest, ALogThatShrinksWhileItIsReadIsDamaged) {
  for (const std::string reader : {"json", "summary"}) {
    write("run.log", logWithDocumentOver(1000000));
    const ProgramResult result = runWith({"shrink", "run.log", kOneByte, kSecondRead},
                                         {"run.log", "-o", "out.json", "--reader", reader});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.errors,
                HasSubstr("run.log: not a profiling log, or one that ends inside its first "
                          "chunk: 996 of "));
    expectOldOutput();
  }
}

// What was read may be whole chunks: only the file's size tells that something is missing.
TEST_F(FaultTest, ALogThatShrinksBetweenChunksIsNotTakenForWhole) {
  std::string chunk = chunkBytes("{}");
  chunk.resize(8187);  // with its length all that a stream reads at once
  for (const std::vector<std::string>& verb :
       {std::vector<std::string>{"export", "json"}, {"view"}}) {
    write("run.log", framed(chunk) + framed(chunk));
    std::vector<std::string> arguments = verb;
    arguments.insert(arguments.end(), {"run.log", "-o", "out.json"});
    EXPECT_THAT(runWith({"shrink", "run.log", kOneByte, kSecondRead}, arguments),
                FailsWith("run.log: became shorter while it was read; read it when nobody "
                          "changes it"));
    expectOldOutput();
  }
}

struct WriteError {
  int error;
  std::string explanation;
};

TEST_F(FaultTest, WriteErrorsOfTheOutputAreNamed) {
  const std::vector<WriteError> errors = {
      {ENOSPC, "disk full; free some space or choose another place"},
      {EDQUOT, "disk full; free some space or choose another place"},
      {EIO, "Input/output error; check the file and its place"},
      {EPIPE, "closed before the output was complete; keep its reader running"}};
  for (const auto& [error, explanation] : errors) {
    for (const std::string reader : {"json", "summary"}) {
      const ProgramResult result =
          runWith({"write", "out.json", error}, {"run.log", "-o", "out.json", "--reader", reader});
      EXPECT_THAT(result, FailsWith("out.json: " + explanation)) << reader;
      expectOldOutput();
    }
  }
}

TEST_F(FaultTest, LateErrorsKeepTheOldOutput) {
  const std::string explanation = "out.json: Input/output error; check the file and its place";
  EXPECT_THAT(runWith({"close", "out.json", EIO}, {"run.log", "-o", "out.json"}),
              FailsWith(explanation));
  expectOldOutput();
  EXPECT_THAT(runWith({"rename", "out.json", EIO}, {"run.log", "-o", "out.json"}),
              FailsWith(explanation));
  expectOldOutput();
  for (const std::string reader : {"json", "summary"}) {
    EXPECT_THAT(
        runWith({"fsync", "out.json", EIO}, {"run.log", "-o", "out.json", "--reader", reader}),
        FailsWith(explanation));
    expectOldOutput();
  }
}

// The file's own name has a slash before it; the program's work file is ".out.json.XXXXXX".
TEST_F(FaultTest, AListingThatCannotBeAddedWholeIsTakenBack) {
  const std::string explanation = "out.json: Input/output error; check the file and its place";
  write("run.log", logWithDocumentOver(1'000));
  for (const Fault& fault : {Fault{"write", "/out.json", EIO}, Fault{"write", "/out.json", EIO, 2},
                             Fault{"fsync", "/out.json", EIO}}) {
    const ProgramResult result = runWith(fault, {"run.log", "-r", "summary", "-o", "out.json"});
    EXPECT_THAT(result, FailsWith(explanation));
    EXPECT_EQ(result.output, "");
    expectOldOutput();
  }
  std::filesystem::remove(directory() / "out.json");
  EXPECT_THAT(runWith({"write", "/out.json", EIO}, {"run.log", "-r", "summary", "-o", "out.json"}),
              FailsWith(explanation));
  EXPECT_THAT(names(), ElementsAre("run.log"));
}

TEST_F(FaultTest, AddingByteByByteOrWithInterruptionsGivesTheSameListing) {
  ASSERT_THAT(run({"run.log", "-r", "summary", "-o", "one.csv"}), SucceedsQuietly());
  for (const int error : {kOneByte, EINTR}) {
    write("out.json", "old");
    EXPECT_THAT(
        runWith({"write", "/out.json", error}, {"run.log", "-r", "summary", "-o", "out.json"}),
        SucceedsQuietly());
    EXPECT_EQ(read("out.json"), "old\n" + read("one.csv"));
  }
}

class PayloadSearchTest : public FaultTest {
 protected:
  // Looking whether a name is taken opens it: once and for its last number, and for the next one.
  // More tries than that see no file, so that an earlier payload would be written over.
  void expectFewTries(const std::vector<std::string>& names, std::size_t count) {
    constexpr std::size_t kTries = 3;
    const std::size_t files = names.size() * count;
    write("run.log", logOfPayloadsFor(names, count));
    EXPECT_THAT(runWith({"open", "file", EMFILE, static_cast<int>(kTries * files + 1)},
                        {"run.log", "-r", "summary", "--payloads"}),
                SucceedsQuietly());
    EXPECT_TRUE(
        std::filesystem::exists(directory() / ("file_" + std::to_string(files - 1) + ".bin")));
  }
};

TEST_F(PayloadSearchTest, GoesOnBehindTheLastNumberOfAName) { expectFewTries({"file.bin"}, 300); }

TEST_F(PayloadSearchTest, GoesOnBehindTheLastNumberOfAFile) {
  expectFewTries(spellings("file.bin", 300), 1);
}

class MemoryFaultTest : public FaultTest, public testing::WithParamInterface<std::string> {};

// From the opening of the log on, the n-th request for memory fails, for every n until none does.
TEST_P(MemoryFaultTest, IsSaidAndLeavesTheOldOutput) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the address sanitizer hands out the memory";
#endif
  int failures = 0;
  for (int first = 1;; ++first) {
    const ProgramResult result = runWith({"memory", "run.log", ENOMEM, first},
                                         {"run.log", "-o", "out.json", "--reader", GetParam()});
    ASSERT_EQ(result.signal, 0) << first;
    if (result.exitStatus == 0) {
      break;
    }
    ASSERT_EQ(result.exitStatus, 1) << first;
    ASSERT_THAT(result.errors,
                AnyOf(HasSubstr("not enough memory; "), HasSubstr("not enough memory to read it; "),
                      HasSubstr(" says: ")))
        << first;
    expectOldOutput();
    ++failures;
  }
  EXPECT_GT(failures, 5);
}

INSTANTIATE_TEST_SUITE_P(Readers, MemoryFaultTest, testing::Values("json", "summary"),
                         [](const auto& reader) { return reader.param; });

// What cannot be read is no damage: nothing is saved in its place.
TEST_F(FaultTest, ALogThatCannotBeReadIsNotRecovered) {
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"recover", "run.log", "-o", "out.json"},
        {"recover", "run.log", "-o", "out.json", "--search"},
        {"export", "json", "run.log", "-o", "out.json", "--keep-going"}}) {
    EXPECT_THAT(runWith({"read", "run.log", EIO}, words),
                FailsWith("run.log: cannot be read whole; check the disk, or copy the log again"));
    expectOldOutput();
  }
}

TEST_F(FaultTest, ACopyThatCannotBeReadBackIsNotHandedOut) {
  EXPECT_THAT(runWith({"read", ".out.json.", EIO}, {"recover", "run.log", "-o", "out.json"}),
              FailsWith("out.json: Input/output error; check the file and its place"));
  expectOldOutput();
}

TEST_F(FaultTest, ACopyThatIsNotWhatWasWrittenIsNotHandedOut) {
  EXPECT_THAT(runWith({"spoil", ".out.json.", 0}, {"recover", "run.log", "-o", "out.json"}),
              FailsWith("out.json: does not hold what was written to it; check the disk and try "
                        "again"));
  expectOldOutput();
}

TEST_F(FaultTest, ALogThatShrinksIsNotRecovered) {
  for (const char* option : {"-q", "--search"}) {
    write("run.log", logOfExecutions(100));
    EXPECT_THAT(
        runWith({"shrink", "run.log", 0}, {"recover", "run.log", "-o", "out.json", option}),
        FailsWith("run.log: became shorter while it was read; read it when nobody changes it"));
    expectOldOutput();
  }
}

TEST_F(FaultTest, ARecoveredLogThatDoesNotReachTheDiskIsNotHandedOut) {
  EXPECT_EQ(
      runWith({"fsync", "out.json", EIO}, {"recover", "run.log", "-o", "out.json"}).exitStatus, 1);
  expectOldOutput();
}

}  // namespace
}  // namespace vyn::test
