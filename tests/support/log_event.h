#pragma once

#include <profile_log_generated.h>

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "vyn/profiling/event_node.h"

namespace vyn::test {

using profiling::schema::EventType;
using profiling::schema::EventUnit;

/// One event of a log; what is left out is absent from it. Its value's type is its kind of value.
struct Event {
  using Bytes = std::vector<std::uint8_t>;
  using Value =
      std::variant<std::monostate, std::int64_t, std::uint64_t, float, double, std::string, Bytes>;

  std::optional<std::string> identifier = {};
  Value value = {};
  EventUnit unit = EventUnit::UNSPECIFIED;
  EventType type = EventType::NONE;
  std::optional<std::string> secondaryName = {};
  std::uint64_t extraValue = 0;
  std::vector<Event> subEvents = {};

  /// The event as a reader decodes it. A text value lives as long as the process.
  operator profiling::EventNode() const;  // NOLINT(google-explicit-constructor): stands for one
};

using Events = std::vector<Event>;

// Events with an unsigned value, in the unit that they are named for.
Event number(const std::string& identifier, std::uint64_t value, const Events& subEvents = {});
Event microseconds(const std::string& identifier, std::uint64_t value,
                   const Events& subEvents = {});
Event bytes(const std::string& identifier, std::uint64_t value, const Events& subEvents = {});
Event cycles(const std::string& identifier, std::uint64_t value, const Events& subEvents = {});
Event count(const std::string& identifier, std::uint64_t value, const Events& subEvents = {});

/// An OBJECT event whose payload goes to a file.
Event object(const std::string& fileName, const std::string& payload, const Events& subEvents = {});

/// An event with a text for a value.
Event text(const std::string& identifier, const std::string& value);

// Numbers that each step's messages sort out by their type.
Event initEvent(const std::string& identifier, std::uint64_t value);
Event finalizeEvent(const std::string& identifier, std::uint64_t value);
Event queueWait(std::uint64_t value);

/// The same event with another unit or type, which may be a number that the schema has no name for.
Event ofUnit(EventUnit unit, Event event);
Event ofType(EventType type, Event event);

}  // namespace vyn::test
