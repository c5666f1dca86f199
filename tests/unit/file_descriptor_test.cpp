#include "files/file_descriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include "support/temp_folder.h"

namespace vyn::files {
namespace {

class OpenFile : public testing::Test {
 protected:
  NamedFile openWith(const std::string& bytes) {
    m_descriptor = FileDescriptor(open(m_folder.add("file", bytes).c_str(), O_RDONLY | O_CLOEXEC));
    return {m_descriptor.get(), "file"};
  }

 private:
  test::TempFolder m_folder;
  FileDescriptor m_descriptor;
};

using ReadFrom = OpenFile;
using TailOf = OpenFile;

std::string textFrom(const NamedFile& file, std::uint64_t offset) {
  std::string text;
  readFrom(file, offset, [&text](std::string_view block) { text += block; });
  return text;
}

TEST_F(ReadFrom, GivesAllBlocksInTheirOrder) {
  std::string bytes;
  for (int number = 0; bytes.size() < 600'000; ++number) {
    bytes += std::to_string(number);
  }
  EXPECT_EQ(textFrom(openWith(bytes), 0), bytes);
}

TEST_F(ReadFrom, StartsAtTheOffset) {
  const NamedFile file = openWith("0123456789");
  EXPECT_EQ(textFrom(file, 7), "789");
  EXPECT_EQ(textFrom(file, 10), "");
  EXPECT_EQ(textFrom(file, 0), "0123456789");
}

TEST_F(TailOf, IsAsLongAsTheFileAtMost) {
  const NamedFile file = openWith("0123456789");
  EXPECT_EQ(tailOf(file, 3), "789");
  EXPECT_EQ(tailOf(file, 10), "0123456789");
  EXPECT_EQ(tailOf(file, 11), "0123456789");
}

TEST_F(TailOf, OfAnEmptyFileIsEmpty) { EXPECT_EQ(tailOf(openWith(""), 8), ""); }

}  // namespace
}  // namespace vyn::files
