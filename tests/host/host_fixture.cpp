#include "host/host_fixture.h"

#include "support/text_file.h"

namespace vyn::test {

namespace fs = std::filesystem;

HostTest::HostTest() : m_directory(fs::canonical(m_folder.path("."))) {
  fs::create_directory(scratch());
}

void HostTest::write(const std::string& name, const std::string& content) const {
  writeFile(m_directory / name, content);
}

std::string HostTest::read(const std::string& name) const { return readFile(m_directory / name); }

std::vector<std::string> HostTest::names() const {
  std::vector<std::string> names = m_folder.files();
  if (fs::is_empty(scratch())) {
    std::erase(names, scratch().filename());
  }
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

namespace {

Message smallExecution() {
  return {.method = MethodType::BACKEND_EXECUTE,
          .timestamp = 10,
          .sequenceNumber = 1,
          .startTime = 100,
          .stopTime = 107,
          .graph = "net",
          .events = {ofType(EventType::EXECUTE, microseconds("run", 3))}};
}

}  // namespace

std::string logOfExecutions(std::size_t count) {
  return logWith(std::vector<Message>(count, execute("net", {.duration = 7})));
}

Event doubleEvent(double value) { return {.identifier = "run", .value = value}; }

std::string smallLog() {
  return logOf({chunkOf({smallExecution()},
                        "{timeScale:1,netRunVersion:\"net-run 7\","
                        "version:{major:1,minor:2,teeny:3}}")});
}

std::string logWithDocumentOver(std::size_t size) {
  constexpr std::size_t kMinMessageText = 100;  // bytes
  return logWith(std::vector<Message>(size / kMinMessageText + 1, smallExecution()));
}

std::string ownLine(const std::string& text) { return "vyn-profile-viewer: " + text + "\n"; }

}  // namespace vyn::test
