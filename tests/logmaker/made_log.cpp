#include "made_log.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace vyn::logmaker::test {
namespace fs = std::filesystem;

TestDirectory::TestDirectory() {
  std::string name = (fs::temp_directory_path() / "log_maker_XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("no directory for the test");
  }
  m_path = name;
}

TestDirectory::~TestDirectory() { fs::remove_all(m_path); }

std::vector<std::string> TestDirectory::files() const {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(m_path)) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

RunResult runMaker(const TestDirectory& directory, const std::string& arguments,
                   const std::string& before) {
  // What the program says is kept elsewhere, so that the directory shows only its own files.
  const TestDirectory said;
  const std::string command = "cd '" + directory.path("") + "' && " + before +
                              " '" VYN_MAKE_LOG "' " + arguments + " >'" + said.path("output") +
                              "' 2>'" + said.path("errors") + "'";
  const int status = std::system(command.c_str());
  return {WEXITSTATUS(status), fileContents(said.path("output")),
          fileContents(said.path("errors"))};
}

void expectOneLine(const std::string& errors) {
  EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1) << errors;
  EXPECT_EQ(errors.find('\n'), errors.size() - 1) << errors;
  EXPECT_EQ(errors.rfind("vyn-make-log: ", 0), 0U) << errors;
}

std::string fileContents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

MadeLog::MadeLog(const std::string& bytes) {
  std::size_t position = 0;
  while (position < bytes.size()) {
    std::uint32_t length = 0;
    if (bytes.size() - position < sizeof(length)) {
      throw std::runtime_error("the log ends in a length");
    }
    std::memcpy(&length, bytes.data() + position, sizeof(length));
    position += sizeof(length);
    if (bytes.size() - position < length) {
      throw std::runtime_error("the log ends in a chunk");
    }
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(position);
    m_chunks.emplace_back(begin, begin + length);
    position += length;

    flatbuffers::Verifier verifier(m_chunks.back().data(), length);
    if (!verifier.VerifyBuffer<schema::ProfileLog>(nullptr)) {
      throw std::runtime_error("a chunk is no whole buffer");
    }
  }
}

MadeLog MadeLog::withOptions(const std::string& options) {
  const TestDirectory directory;
  const RunResult result = runMaker(directory, "-o log " + options);
  EXPECT_EQ(result.status, 0) << result.errors;
  return MadeLog(fileContents(directory.path("log")));
}

const schema::ProfileLog& MadeLog::chunk(std::size_t index) const {
  return *schema::GetProfileLog(m_chunks[index].data());
}

std::vector<const schema::Message*> MadeLog::messages() const {
  std::vector<const schema::Message*> all;
  for (std::size_t i = 0; i < chunkCount(); ++i) {
    const auto* messages = chunk(i).messages();
    all.insert(all.end(), messages->begin(), messages->end());
  }
  return all;
}

std::vector<const schema::Message*> MadeLog::messagesOf(schema::MethodType method) const {
  std::vector<const schema::Message*> found = messages();
  std::erase_if(found, [method](const auto* message) { return message->method() != method; });
  return found;
}

std::vector<const schema::Event*> eventsWhere(
    const EventList* events, const std::function<bool(const schema::Event&)>& test) {
  std::vector<const schema::Event*> found;
  if (events != nullptr) {
    std::copy_if(events->begin(), events->end(), std::back_inserter(found),
                 [&test](const schema::Event* event) { return test(*event); });
  }
  return found;
}

std::vector<const schema::Event*> eventsOfType(const EventList* events, schema::EventType type) {
  return eventsWhere(events, [type](const schema::Event& event) { return event.type() == type; });
}

}  // namespace vyn::logmaker::test
