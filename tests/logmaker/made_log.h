#pragma once

#include <gmock/gmock.h>
#include <profile_log_generated.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "input/chunk.h"
#include "support/run_program.h"
#include "support/temp_folder.h"
#include "support/text_file.h"

namespace vyn::logmaker::test {

namespace schema = profiling::schema;

using vyn::test::ProgramResult;
using vyn::test::readFile;
using vyn::test::TempFolder;

/// Runs the log maker through the shell in the folder; `before` precedes its name.
ProgramResult runMaker(const TempFolder& folder, const std::string& arguments,
                       const std::string& before = "");

/// Matches a single line that begins with the program's name.
inline auto isOneOwnLine() { return testing::MatchesRegex("vyn-make-log: [^\n]*\n"); }

/// A log cut into its chunks, each verified.
class MadeLog {
 public:
  explicit MadeLog(const std::string& bytes);

  /// Makes a log with these options and reads it.
  static MadeLog withOptions(const std::string& options);

  std::size_t chunkCount() const { return m_chunks.size(); }
  std::size_t chunkSize(std::size_t index) const { return m_chunks[index].size; }
  const schema::ProfileLog& chunk(std::size_t index) const;

  std::vector<const schema::Message*> messages() const;
  std::vector<const schema::Message*> messagesOf(schema::MethodType method) const;

 private:
  std::vector<profiling::Chunk> m_chunks;
};

using EventList = flatbuffers::Vector<flatbuffers::Offset<schema::Event>>;

/// Events of the list for which the test holds; sub-events are not looked at.
std::vector<const schema::Event*> eventsWhere(
    const EventList* events, const std::function<bool(const schema::Event&)>& test);

std::vector<const schema::Event*> eventsOfType(const EventList* events, schema::EventType type);

}  // namespace vyn::logmaker::test
