// Messages of which the last one that is taken counts.

#include <list>

#include "core/vyn_profile_log_reader.h"
#include "input/event_decoder.h"
#include "input/message_duration.h"

namespace vyn::profiling {

bool VynProfileLogReader::takeTiming(const schema::Message& message, std::uint64_t& timestamp,
                                     std::uint64_t& duration) {
  // Before the filter: a rejected message still moves the time stamp.
  timestamp = message.header()->timestamp();
  if (!isVisible(message)) {
    return false;
  }
  duration = messageDuration(message);
  return true;
}

bool VynProfileLogReader::takeSingleRecord(const schema::Message& message, std::uint64_t& duration,
                                           std::uint64_t& timestamp,
                                           std::vector<EventNode>& events) {
  if (!isVisible(message)) {
    return false;
  }
  // Decoded first: when memory runs out, the store keeps what it had.
  std::list<std::string> strings;
  events = decodeEvents(message.profilingEvents(), strings);
  keepStrings(strings);
  duration = messageDuration(message);
  timestamp = message.header()->timestamp();
  return true;
}

bool VynProfileLogReader::takeCreateFromBinary(const schema::Message& message) {
  const bool taken = takeSingleRecord(message, m_createFromBinaryTime, m_createFromBinaryTimestamp,
                                      m_createFromBinaryEvents);
  m_hasCreateFromBinaryEvents |= taken;
  return taken;
}

bool VynProfileLogReader::takeDeInit(const schema::Message& message) {
  return takeSingleRecord(message, m_deInitTime, m_deInitTimestamp, m_deInitEvents);
}

bool VynProfileLogReader::takeExecuteIps(const schema::Message& message) {
  const bool taken =
      takeSingleRecord(message, m_executeIpsTime, m_executeIpsTimestamp, m_executeIpsEvents);
  m_hasExecuteIps |= taken;
  return taken;
}

bool VynProfileLogReader::takeLibraryLoad(const schema::Message& message) {
  const bool taken = takeSingleRecord(message, m_libLoadTime, m_libLoadTimestamp, m_libLoadEvents);
  m_hasLibLoad |= taken;
  return taken;
}

}  // namespace vyn::profiling
