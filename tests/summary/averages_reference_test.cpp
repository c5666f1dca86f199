// Averages of random executions against the plainest way to compute them.

#include <gtest/gtest.h>
#include <profile_log_generated.h>

#include <random>

#include "input/event_averager.h"

namespace vyn::test {
namespace {

using profiling::EventDataType;
using profiling::EventNode;
using profiling::schema::EventUnit;
using Events = std::vector<EventNode>;

/// Lists whose few names meet often, at the same depth and at others, in any order.
class RandomEvents {
 public:
  Events list(int depth = 0) {
    Events events(number(depth == 0 ? 12 : 5));
    for (EventNode& event : events) {
      event.identifier = std::string(1, static_cast<char>('a' + number(6)));
      event.dataType = number(2) == 0 ? EventDataType::UINT_64 : EventDataType::FLOAT_64;
      event.value.uint64 = number(1000);
      event.unit = number(7);
      event.type = number(500);
      event.secondaryName = std::to_string(number(1000));
      event.extraValue = number(1000);
      if (depth < 3) {
        event.children = list(depth + 1);
      }
    }
    return events;
  }

 private:
  unsigned number(unsigned limit) { return static_cast<unsigned>(m_random()) % limit; }

  std::mt19937 m_random{20231114};
};

void merge(Events& merged, const Events& events) {
  const std::size_t size = merged.size();
  for (const EventNode& event : events) {
    std::size_t i = 0;
    while (i < size && merged[i].identifier != event.identifier) {
      ++i;
    }
    if (i < size) {
      merged[i].value.uint64 += event.value.uint64;
      merged[i].dataType = EventDataType::UINT_64;
      ++merged[i].count;
      merge(merged[i].children, event.children);
    } else if (event.unit != static_cast<std::uint32_t>(EventUnit::OBJECT)) {
      merged.push_back(event);
    }
  }
}

void divide(Events& merged) {
  for (EventNode& event : merged) {
    if (event.dataType == EventDataType::UINT_64) {
      event.value.uint64 /= event.count;
    }
    divide(event.children);
  }
}

std::string text(const Events& events) {
  std::string text;
  for (const EventNode& event : events) {
    text += event.identifier + std::to_string(static_cast<unsigned>(event.dataType)) + " " +
            std::to_string(event.value.uint64) + " " + std::to_string(event.unit) + " " +
            std::to_string(event.type) + " " + event.secondaryName + " " +
            std::to_string(event.extraValue) + " " + std::to_string(event.count) + "{" +
            vyn::test::text(event.children) + "}";
  }
  return text;
}

TEST(AveragesReference, RandomExecutionsHaveTheSameAverages) {
  RandomEvents random;
  for (int round = 0; round < 200; ++round) {
    const std::vector<Events> executions = {random.list(), random.list(), random.list(),
                                            random.list()};
    profiling::EventAverager averager;
    Events expected;
    for (const Events& events : executions) {
      averager.add(events);
      merge(expected, events);
    }
    divide(expected);
    ASSERT_EQ(text(averager.takeAverages()), text(expected)) << "round " << round;
  }
}

}  // namespace
}  // namespace vyn::test
