// Messages of steps of the whole run, of which the last one that is taken counts.

#include <list>

#include "input/event_decoder.h"
#include "input/message_duration.h"
#include "input/message_filing.h"

namespace vyn::profiling {

void fileTiming(const schema::Message& message, const StepTimes& times) {
  times.duration = messageDuration(message);
  times.timestamp = message.header()->timestamp();
}

void fileStep(const schema::Message& message, const StepStore& store,
              std::list<std::string>& strings) {
  // Decoded first: when memory runs out, the store keeps what it had.
  std::list<std::string> newStrings;
  store.events = decodeEvents(message.profilingEvents(), newStrings);
  strings.splice(strings.end(), newStrings);
  store.duration = messageDuration(message);
  store.timestamp = message.header()->timestamp();
  if (store.isSeen != nullptr) {
    *store.isSeen = true;
  }
}

}  // namespace vyn::profiling
