#pragma once

#include <vector>

namespace vyn::profiling {

/// After it the next element can be appended without memory.
template <typename Element>
void makeRoomForOne(std::vector<Element>& elements) {
  if (elements.size() == elements.capacity()) {
    elements.reserve(2 * elements.size() + 1);
  }
}

}  // namespace vyn::profiling
