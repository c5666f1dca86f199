#include "made_log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <stdexcept>

namespace vyn::logmaker::test {

ProgramResult runMaker(const TempFolder& folder, const std::string& arguments,
                       const std::string& before) {
  return vyn::test::runProgram(
      {.words = {"/bin/sh", "-c", before + " '" VYN_MAKE_LOG "' " + arguments},
       .directory = folder.path("")});
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
