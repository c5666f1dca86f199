#pragma once

#include <string>

#include "support/json_messages.h"

namespace vyn::test {

/// A log in which each step occurs, each with an event: graph "A" was executed twice, graph "B"
/// once. Time stamps and durations all differ.
inline std::string everyStepLog() {
  const auto events = [](const std::string& list) { return "profilingEvents:[" + list + "]"; };
  const auto graph = [&](const std::string& name, const std::string& list) {
    return "graphName:\"" + name + "\"," + events(list);
  };
  return logOf({chunkOf(
      {message("10", 1, 2, events(event("open", 3))), message("6", 4, 5), message("7", 6, 7),
       message("2", 8, 9, graph("A", event("fuse", 10, "subEvents:[" + event("fold", 11) + "]"))),
       message("1", 12, 30, graph("A", event("x", 1, "subEvents:[" + event("y", 4) + "]"))),
       message("1", 13, 20, graph("A", event("x", 3))),
       message("1", 14, 15, graph("B", event("z", 16) + "," + event("load", 17, "type:100"))),
       message("11", 18, 19, graph("A", event("patch", 20))), message("11", 21, 22, graph("A", "")),
       message("8", 23, 24, events(event("duration", 2000000) + "," + event("count", 100))),
       message("5", 25, 26, events(event("free", 27)))})});
}

}  // namespace vyn::test
