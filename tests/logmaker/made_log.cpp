#include "made_log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <stdexcept>

#include "input/byte_source.h"
#include "input/chunk_walk.h"

namespace vyn::logmaker::test {
namespace {

// Keeps the chunks. Unlike the readers it wants their data aligned.
class WholeChunks : public profiling::ChunkSink {
 public:
  explicit WholeChunks(std::vector<profiling::Chunk>& chunks) : m_chunks(chunks) {}

  bool take(const profiling::Chunk& chunk, const profiling::ChunkPlace& /*place*/) override {
    m_chunks.push_back(chunk);
    return flatbuffers::Verifier(chunk.data(), chunk.size)
        .VerifyBuffer<schema::ProfileLog>(nullptr);
  }

 private:
  std::vector<profiling::Chunk>& m_chunks;
};

}  // namespace

ProgramResult runMaker(const TempFolder& folder, const std::string& arguments,
                       const std::string& before) {
  return vyn::test::runProgram(
      {.words = {"/bin/sh", "-c", before + " '" VYN_MAKE_LOG "' " + arguments},
       .directory = folder.path("")});
}

MadeLog::MadeLog(const std::string& bytes) {
  profiling::MemorySource source(
      {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
  WholeChunks sink(m_chunks);
  if (profiling::walkChunks(source, sink).end != profiling::WalkEnd::kEndOfLog) {
    throw std::runtime_error("the log is not made of whole chunks");
  }
}

MadeLog MadeLog::withOptions(const std::string& options) {
  const TempFolder folder;
  const ProgramResult result = runMaker(folder, "-o log " + options);
  EXPECT_EQ(result.exitStatus, 0) << result.errors;
  return MadeLog(readFile(folder.path("log")));
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
