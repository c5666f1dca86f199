// Which number the next payload of a file gets, and what searches remember of each other.

#include <fcntl.h>
#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include "report/payload_names.h"
#include "support/temp_folder.h"

namespace vyn::test {
namespace {

// By relative names, for the folder's own name has a dot.
class PayloadNumbers : public testing::Test {
 protected:
  PayloadNumbers() { std::filesystem::current_path(m_folder.path("")); }
  ~PayloadNumbers() override { std::filesystem::current_path(m_previous); }

  // The free name, at which a file stands afterwards.
  std::string take(const std::string& name) {
    std::string freeName = m_names.freeName(name);
    m_folder.add(freeName, "");
    return freeName;
  }

  std::filesystem::path m_previous = std::filesystem::current_path();
  TempFolder m_folder;
  profiling::PayloadNames m_names;
};

using Scope = profiling::PayloadNames::Scope;

TEST_F(PayloadNumbers, GoOnWithinAScope) {
  const Scope scope(m_names);
  EXPECT_EQ(take("x.bin"), "x.bin");
  EXPECT_EQ(take("x.bin"), "x_1.bin");
  EXPECT_EQ(take("x.bin"), "x_2.bin");
  std::filesystem::remove("x_1.bin");
  EXPECT_EQ(take("x.bin"), "x_3.bin");
}

TEST_F(PayloadNumbers, AreForgottenWithTheOutermostScope) {
  {
    const Scope outer(m_names);
    for (int i = 0; i < 3; ++i) {
      take("x.bin");
    }
    { const Scope inner(m_names); }
    std::filesystem::remove("x_1.bin");
    EXPECT_EQ(m_names.freeName("x.bin"), "x_3.bin");
  }
  const Scope other(m_names);
  EXPECT_EQ(m_names.freeName("x.bin"), "x_1.bin");
}

TEST_F(PayloadNumbers, AreNotRememberedOutsideOfAScope) {
  take("x.bin");
  take("x.bin");
  std::filesystem::remove("x_1.bin");
  EXPECT_EQ(m_names.freeName("x.bin"), "x_1.bin");
}

TEST_F(PayloadNumbers, NameItselfIsTriedAgainEachTime) {
  const Scope scope(m_names);
  take("x.bin");
  take("x.bin");
  std::filesystem::remove("x.bin");
  EXPECT_EQ(take("x.bin"), "x.bin");
  EXPECT_EQ(take("x.bin"), "x_2.bin");
}

// A number that was given up shows that the search went on behind it.
TEST_F(PayloadNumbers, AreSharedByTheSpellingsOfOneFile) {
  std::filesystem::create_directories("d/e");
  const Scope scope(m_names);
  for (const std::string folder : {"", "d/e/"}) {
    for (int i = 0; i < 3; ++i) {
      take(folder + "x.bin");
    }
    std::filesystem::remove(folder + "x_1.bin");
  }
  EXPECT_EQ(m_names.freeName("./x.bin"), "./x_3.bin");
  EXPECT_EQ(m_names.freeName(".//.//x.bin"), ".//.//x_3.bin");
  EXPECT_EQ(m_names.freeName("d/../x.bin"), "d/../x_3.bin");
  EXPECT_EQ(m_names.freeName("d//e/x.bin"), "d//e/x_3.bin");
  EXPECT_EQ(m_names.freeName("d/e/../e/x.bin"), "d/e/../e/x_3.bin");
}

TEST_F(PayloadNumbers, AreSharedWhereADotOfAFolderCounts) {
  for (const char* folder : {"v1.2", "v1_1.2", "v1_2.2"}) {
    std::filesystem::create_directory(folder);
  }
  const Scope scope(m_names);
  EXPECT_EQ(take("v1.2/x"), "v1.2/x");
  EXPECT_EQ(take("v1.2/x"), "v1_1.2/x");
  EXPECT_EQ(take("v1.2/x"), "v1_2.2/x");
  std::filesystem::remove("v1_1.2/x");
  EXPECT_EQ(m_names.freeName("v1.2///x"), "v1_3.2///x");
  EXPECT_EQ(m_names.freeName("./v1.2/x"), "./v1_3.2/x");
}

TEST_F(PayloadNumbers, AreCountedForEachFolderAndExtension) {
  std::filesystem::create_directory("d");
  const Scope scope(m_names);
  for (const char* name : {"x.bin", "x.bin", "d/x.bin", "x.txt", "x"}) {
    take(name);
  }
  EXPECT_EQ(m_names.freeName("d/x.bin"), "d/x_1.bin");
  EXPECT_EQ(m_names.freeName("x.txt"), "x_1.txt");
  EXPECT_EQ(m_names.freeName("x"), "x_1");
  EXPECT_EQ(m_names.freeName("x.bin"), "x_2.bin");
}

// Who opens such a file waits until its holder gives it up.
TEST_F(PayloadNumbers, FileLeasedToAProgramIsTaken) {
  const std::string path = m_folder.add("x.bin", "");
  const auto previous = std::signal(SIGIO, SIG_IGN);  // by which the holder is asked to give it up
  const int file = open(path.c_str(), O_RDWR | O_CLOEXEC);
  if (fcntl(file, F_SETLEASE, F_WRLCK) != 0) {
    GTEST_SKIP() << "the file system knows no leases";
  }
  EXPECT_EQ(m_names.freeName("x.bin"), "x_1.bin");
  close(file);
  std::signal(SIGIO, previous);
}

}  // namespace
}  // namespace vyn::test
