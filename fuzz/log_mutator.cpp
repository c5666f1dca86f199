#include "log_mutator.h"

#include <mutable_log_generated.h>

#include <algorithm>
#include <array>
#include <limits>
#include <random>

namespace vyn::fuzz {
namespace {

using namespace schema;  // NOLINT(google-build-using-namespace)
using Events = std::vector<std::unique_ptr<EventT>>;

constexpr std::size_t kMaxNesting = 60;  // below the verifier's limit

class Mutator {
 public:
  explicit Mutator(unsigned seed) : m_random(seed) {}

  void mutate(ProfileLogT& log) {
    if (log.messages.empty() || below(10) == 0) {
      log.messages.push_back(newMessage());
    }
    MessageT& message = *log.messages[below(log.messages.size())];
    if (message.profilingEvents.empty() || below(4) == 0) {
      mutateMessage(message);
    } else {
      mutateEvents(message.profilingEvents, 1);
    }
    if (below(8) == 0) {
      mutateHeader(log);
    }
  }

 private:
  std::size_t below(std::size_t limit) { return m_random() % limit; }

  std::uint64_t number() {
    constexpr std::array<std::uint64_t, 8> kEdges{
        0, 1, 2, 1000, 0x7FFFFFFF, 0x7FFFFFFFFFFFFFFF, 0x8000000000000000, ~std::uint64_t{0}};
    return below(2) == 0 ? kEdges[below(kEdges.size())] : m_random();
  }

  double realNumber() {
    using Limits = std::numeric_limits<double>;
    const std::array<double, 8> edges{0.0,
                                      -0.0,
                                      1.5,
                                      Limits::max(),
                                      Limits::denorm_min(),
                                      Limits::infinity(),
                                      Limits::quiet_NaN(),
                                      1e-7};
    return below(2) == 0 ? edges[below(edges.size())] : static_cast<double>(number()) / 3.0;
  }

  std::string text() {
    std::string result(below(below(20) == 0 ? 2000 : 20), '\0');
    for (char& character : result) {
      character = static_cast<char>(below(256));
    }
    return result;
  }

  std::unique_ptr<MessageT> newMessage() {
    auto message = std::make_unique<MessageT>();
    message->header = std::make_unique<MessageHeaderT>();
    message->appMetrics = std::make_unique<AppMetricsT>();
    message->graphName = "graph";
    message->method = static_cast<MethodType>(1 + below(11));
    return message;
  }

  void mutateHeader(ProfileLogT& log) {
    log.header = std::make_unique<LogHeaderT>();
    log.header->timeScale = static_cast<float>(below(100)) / 7.0F;
    log.header->epochTime = number();
    log.header->timestamp = number();
    log.header->netRunVersion = text();
  }

  void mutateMessage(MessageT& message) {
    switch (below(8)) {
      case 0:
        message.method = static_cast<MethodType>(static_cast<std::int8_t>(below(256)));
        break;
      case 1:
        message.visibilityLevel = static_cast<std::int8_t>(below(256));
        break;
      case 2:
        message.graphName = text();
        break;
      case 3:
        message.header->timestamp = number();
        break;
      case 4:
        message.appMetrics->startTime = number();
        break;
      case 5:
        message.appMetrics->stopTime = number();
        break;
      case 6:
        message.appMetrics->stopMem = number();
        break;
      default:
        message.profilingEvents.push_back(std::make_unique<EventT>());
        break;
    }
  }

  void mutateEvents(Events& events, std::size_t nesting) {
    const std::size_t place = below(events.size());
    switch (below(8)) {
      case 0:
        events.erase(events.begin() + static_cast<std::ptrdiff_t>(place));
        break;
      case 1:
        events.push_back(std::make_unique<EventT>(*events[place]));
        break;
      case 2:
        std::shuffle(events.begin(), events.end(), m_random);
        break;
      default:
        mutateEvent(*events[place], nesting);
        break;
    }
  }

  void mutateEvent(EventT& event, std::size_t nesting) {
    constexpr std::array<std::uint32_t, 12> kTypes{0,   100, 300, 400, 404,  405,
                                                   406, 407, 408, 500, 1000, 401};
    switch (below(9)) {
      case 0:
        event.identifier = below(4) == 0 ? "duration" : text();
        break;
      case 1:
        event.type = static_cast<EventType>(kTypes[below(kTypes.size())]);
        break;
      case 2:
        event.unit = static_cast<EventUnit>(below(8));
        break;
      case 3:
        event.valueType = static_cast<EventValueType>(below(8));
        break;
      case 4:
        event.uint64Value = number();
        event.int64Value = static_cast<std::int64_t>(number());
        break;
      case 5:
        event.doubleValue = realNumber();
        event.floatValue = static_cast<float>(below(1000)) / 8.0F;
        break;
      case 6:
        event.stringValue = text();
        event.secondaryName = text();
        break;
      case 7:
        event.rawData.assign(below(30), static_cast<std::uint8_t>(below(256)));
        break;
      default:
        if (event.subEvents.empty() && nesting < kMaxNesting) {
          event.subEvents.push_back(std::make_unique<EventT>());
        } else if (!event.subEvents.empty()) {
          mutateEvents(event.subEvents, nesting + 1);
        }
        break;
    }
  }

  std::mt19937_64 m_random;
};

}  // namespace

std::size_t mutateChunk(std::uint8_t* chunk, std::size_t maxSize, unsigned seed) {
  const std::unique_ptr<ProfileLogT> log(GetProfileLog(chunk)->UnPack());
  Mutator(seed).mutate(*log);
  flatbuffers::FlatBufferBuilder builder;
  builder.Finish(CreateProfileLog(builder, log.get()));
  if (builder.GetSize() > maxSize) {
    return 0;
  }
  std::copy_n(builder.GetBufferPointer(), builder.GetSize(), chunk);
  return builder.GetSize();
}

}  // namespace vyn::fuzz
