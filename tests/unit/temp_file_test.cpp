#include "files/temp_file.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <iterator>

#include "files/file_error.h"
#include "support/temp_folder.h"
#include "support/text_file.h"

namespace vyn::files {
namespace {

namespace fs = std::filesystem;
using test::TempFolder;
using testing::HasSubstr;
using testing::ThrowsMessage;

std::ptrdiff_t countFiles(const TempFolder& folder) {
  return std::distance(fs::directory_iterator(folder.path("")), fs::directory_iterator());
}

mode_t permissionsOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0);
  return status.st_mode & 0777;
}

// Writes a text to a file of its own and gives it the name `target`.
void deliver(const TempFolder& folder, const std::string& target, TempFile::Existing existing) {
  TempFile file(folder.path(""), "name", "subject");
  writeAll(file.file(), "new");
  file.finish(target);
  file.moveTo(target, existing);
}

class TempFileTest : public testing::Test {
 protected:
  void SetUp() override { m_previousMask = umask(022); }
  void TearDown() override { umask(m_previousMask); }

  TempFolder m_folder;

 private:
  mode_t m_previousMask = 0;
};

TEST_F(TempFileTest, GoesWithTheObject) {
  {
    const TempFile file(m_folder.path(""), "name", "subject");
    EXPECT_EQ(countFiles(m_folder), 1);
  }
  EXPECT_EQ(countFiles(m_folder), 0);
}

TEST_F(TempFileTest, GetsItsNameWhole) {
  const std::string target = m_folder.path("target");
  deliver(m_folder, target, TempFile::Existing::kRefused);
  EXPECT_EQ(test::readFile(target), "new");
  EXPECT_EQ(permissionsOf(target), 0644U);
  EXPECT_EQ(countFiles(m_folder), 1);
}

TEST_F(TempFileTest, TakesThePermissionsOfWhatItReplaces) {
  const std::string target = m_folder.add("target", "old");
  ASSERT_EQ(chmod(target.c_str(), 0640), 0);
  deliver(m_folder, target, TempFile::Existing::kReplaced);
  EXPECT_EQ(test::readFile(target), "new");
  EXPECT_EQ(permissionsOf(target), 0640U);
  EXPECT_EQ(countFiles(m_folder), 1);
}

TEST_F(TempFileTest, LeavesWhatMayNotBeReplaced) {
  const std::string target = m_folder.add("target", "old");
  EXPECT_THAT([&] { deliver(m_folder, target, TempFile::Existing::kRefused); },
              ThrowsMessage<FileError>(HasSubstr("subject: is there already; ")));
  EXPECT_EQ(test::readFile(target), "old");
  EXPECT_EQ(countFiles(m_folder), 1);
}

TEST_F(TempFileTest, SaysThatItsDirectoryIsMissing) {
  EXPECT_THAT([&] { TempFile(m_folder.path("missing"), "name", "subject"); },
              ThrowsMessage<FileError>(HasSubstr("subject: its directory does not exist; ")));
}

}  // namespace
}  // namespace vyn::files
