#include "host/host_fixture.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace vyn::test {

namespace fs = std::filesystem;

HostTest::HostTest() {
  std::string path = fs::temp_directory_path() / "host_test.XXXXXX";
  m_directory = fs::canonical(mkdtemp(path.data()));
  fs::create_directory(scratch());
}

HostTest::~HostTest() {
  std::error_code ignored;
  fs::remove_all(m_directory, ignored);
}

void HostTest::write(const std::string& name, const std::string& content) const {
  std::ofstream(m_directory / name, std::ios::binary) << content;
}

std::string HostTest::read(const std::string& name) const {
  std::ifstream file(m_directory / name, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << name;
  return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> HostTest::names() const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(m_directory)) {
    if (entry.path() != scratch() || !fs::is_empty(scratch())) {
      names.push_back(entry.path().filename());
    }
  }
  std::sort(names.begin(), names.end());
  return names;
}

ProgramCall HostTest::call(std::vector<std::string> arguments) const {
  arguments.insert(arguments.begin(), VYN_PROFILE_VIEWER);
  return {.words = std::move(arguments),
          .directory = m_directory,
          .environment = {"TMPDIR=" + scratch().string()}};
}

ProgramResult HostTest::run(std::vector<std::string> arguments) const {
  return runProgram(call(std::move(arguments)));
}

ProgramResult HostTest::runInShell(const std::string& script,
                                   std::vector<std::string> arguments) const {
  ProgramCall shell = call(std::move(arguments));
  shell.words.insert(shell.words.begin(), {"/bin/sh", "-c", script});
  return runProgram(shell);
}

std::string smallLog() {
  return makeChunk({{.events = {{.identifier = "run", .value = 3}}}},
                   LogHeader{.netRunVersion = "net-run 7"});
}

std::string logWithDocumentOver(std::size_t size) {
  constexpr std::size_t kMinMessageText = 100;  // bytes
  return makeChunk(std::vector<LogMessage>(size / kMinMessageText + 1,
                                           {.events = {{.identifier = "run", .value = 3}}}));
}

std::string ownLine(const std::string& text) { return "vyn-profile-viewer: " + text + "\n"; }

}  // namespace vyn::test
