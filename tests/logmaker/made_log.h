#pragma once

#include <profile_log_generated.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vyn::logmaker::test {

namespace schema = profiling::schema;

/// A directory of its own for each test, gone with the object.
class TestDirectory {
 public:
  TestDirectory();
  ~TestDirectory();
  TestDirectory(const TestDirectory&) = delete;
  TestDirectory& operator=(const TestDirectory&) = delete;

  std::string path(const std::string& name) const { return (m_path / name).string(); }
  /// Names of the files in it, sorted.
  std::vector<std::string> files() const;

 private:
  std::filesystem::path m_path;
};

struct RunResult {
  int status;
  std::string output;
  std::string errors;
};

/// Runs the log maker through the shell in the directory; `before` precedes its name.
RunResult runMaker(const TestDirectory& directory, const std::string& arguments,
                   const std::string& before = "");

/// Expects a single line that begins with the program's name.
void expectOneLine(const std::string& errors);

std::string fileContents(const std::string& path);

/// A log cut into its chunks, each verified.
class MadeLog {
 public:
  explicit MadeLog(const std::string& bytes);

  /// Makes a log with these options and reads it.
  static MadeLog withOptions(const std::string& options);

  std::size_t chunkCount() const { return m_chunks.size(); }
  std::size_t chunkSize(std::size_t index) const { return m_chunks[index].size(); }
  const schema::ProfileLog& chunk(std::size_t index) const;

  std::vector<const schema::Message*> messages() const;
  std::vector<const schema::Message*> messagesOf(schema::MethodType method) const;

 private:
  std::vector<std::vector<std::uint8_t>> m_chunks;
};

using EventList = flatbuffers::Vector<flatbuffers::Offset<schema::Event>>;

/// Events of the list for which the test holds; sub-events are not looked at.
std::vector<const schema::Event*> eventsWhere(
    const EventList* events, const std::function<bool(const schema::Event&)>& test);

std::vector<const schema::Event*> eventsOfType(const EventList* events, schema::EventType type);

}  // namespace vyn::logmaker::test
