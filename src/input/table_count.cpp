#include "input/table_count.h"

namespace vyn::profiling {
namespace {

using Events = flatbuffers::Vector<flatbuffers::Offset<schema::Event>>;

constexpr std::uint64_t kTablesOfMessage = 3;  // with its header and its metrics

// The verifier's depth limit bounds the recursion.
std::uint64_t eventCount(const Events* events) {
  if (events == nullptr) {
    return 0;
  }
  std::uint64_t count = events->size();
  for (const schema::Event* event : *events) {
    count += eventCount(event->subEvents());
  }
  return count;
}

}  // namespace

std::uint64_t tableCount(const schema::ProfileLog& log) {
  std::uint64_t count = 1;
  if (const schema::LogHeader* header = log.header()) {
    count += header->version() == nullptr ? 1 : 2;
  }
  if (log.messages() != nullptr) {
    for (const schema::Message* message : *log.messages()) {
      count += kTablesOfMessage + eventCount(message->profilingEvents());
    }
  }
  return count;
}

}  // namespace vyn::profiling
