#include "host/host_fixture.h"

#include <algorithm>

#include "support/json_log.h"
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

namespace {

constexpr char kRun[] =
    R"(profilingEvents: [{identifier: "run", type: EXECUTE, unit: MICROSEC,
                          valueType: UINT64, uint64Value: 3}])";

std::string messagesText(const std::vector<std::string>& fields, const std::string& method) {
  std::string text = "messages: [";
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    text += (i == 0 ? "{header: {timestamp: " : ", {header: {timestamp: ") + number +
            "0, sequenceNumber: " + number + "}, method: " + method +
            R"(, appMetrics: {startTime: 100, stopTime: 107}, graphName: "net")" +
            (fields[i].empty() ? "" : ", ") + fields[i] + "}";
  }
  return text + "]";
}

}  // namespace

std::string makeChunk(const std::vector<std::string>& fields, const std::string& method) {
  return logOf({"{" + messagesText(fields, method) + "}"});
}

std::string doubleEvent(const std::string& value) {
  return R"(profilingEvents: [{identifier: "run", valueType: DOUBLE, doubleValue: )" + value + "}]";
}

std::string smallLog() {
  return logOf({R"({header: {timeScale: 1, netRunVersion: "net-run 7",
                    version: {major: 1, minor: 2, teeny: 3}}, )" +
                messagesText({kRun}, "BACKEND_EXECUTE") + "}"});
}

std::string logWithDocumentOver(std::size_t size) {
  constexpr std::size_t kMinMessageText = 100;  // bytes
  return makeChunk(std::vector<std::string>(size / kMinMessageText + 1, kRun));
}

std::string ownLine(const std::string& text) { return "vyn-profile-viewer: " + text + "\n"; }

}  // namespace vyn::test
