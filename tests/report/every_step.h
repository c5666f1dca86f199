#pragma once

#include <string>

#include "support/log_message.h"

namespace vyn::test {

/// A log in which each step occurs, each with an event: graph "A" was executed twice, graph "B"
/// once. Time stamps and durations all differ.
inline std::string everyStepLog() {
  return logWith({
      loadLibrary({.timestamp = 1, .duration = 2}, {number("open", 3)}),
      createContext({.timestamp = 4, .duration = 5}),
      composeGraphs({.timestamp = 6, .duration = 7}),
      finalize("A", {.timestamp = 8, .duration = 9}, {number("fuse", 10, {number("fold", 11)})}),
      execute("A", {.timestamp = 12, .duration = 30}, {number("x", 1, {number("y", 4)})}),
      execute("A", {.timestamp = 13, .duration = 20}, {number("x", 3)}),
      execute("B", {.timestamp = 14, .duration = 15}, {number("z", 16), initEvent("load", 17)}),
      applyBinarySection("A", {.timestamp = 18, .duration = 19}, {number("patch", 20)}),
      applyBinarySection("A", {.timestamp = 21, .duration = 22}),
      executeIps({.timestamp = 23, .duration = 24},
                 {number("duration", 2000000), number("count", 100)}),
      deInit({.timestamp = 25, .duration = 26}, {number("free", 27)}),
  });
}

}  // namespace vyn::test
