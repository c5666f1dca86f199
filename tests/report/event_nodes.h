#pragma once

#include <string>
#include <utility>
#include <vector>

#include "vyn/profiling/event_node.h"

namespace vyn::test {

inline constexpr std::uint32_t kObjectUnit = 5;

/// An event with an unsigned value; cycles unless told otherwise.
inline profiling::EventNode node(const std::string& identifier, std::uint64_t value,
                                 std::uint32_t unit = 3,
                                 std::vector<profiling::EventNode> children = {}) {
  profiling::EventNode event;
  event.identifier = identifier;
  event.dataType = profiling::EventDataType::UINT_64;
  event.value.uint64 = value;
  event.unit = unit;
  event.children = std::move(children);
  return event;
}

/// An OBJECT event whose payload goes to a file.
inline profiling::EventNode payload(const std::string& fileName, const std::string& bytes,
                                    std::vector<profiling::EventNode> children = {}) {
  profiling::EventNode event = node("object", 0, kObjectUnit, std::move(children));
  event.secondaryName = fileName;
  event.rawData.assign(bytes.begin(), bytes.end());
  return event;
}

}  // namespace vyn::test
