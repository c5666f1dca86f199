#pragma once

#include <string>

#include "support/log_message.h"

namespace vyn::test {

/// A log in which each step occurs, each with an event: graph "A" was executed twice, graph "B"
/// once. Time stamps and durations all differ.
inline std::string everyStepLog() {
  return logWith({
      loadLibrary({.duration = 2, .timestamp = 1}, {number("open", 3)}),
      createContext({.duration = 5, .timestamp = 4}),
      composeGraphs({.duration = 7, .timestamp = 6}),
      finalize("A", {.duration = 9, .timestamp = 8}, {number("fuse", 10, {number("fold", 11)})}),
      execute("A", {.duration = 30, .timestamp = 12}, {number("x", 1, {number("y", 4)})}),
      execute("A", {.duration = 20, .timestamp = 13}, {number("x", 3)}),
      execute("B", {.duration = 15, .timestamp = 14}, {number("z", 16), initEvent("load", 17)}),
      applyBinarySection("A", {.duration = 19, .timestamp = 18}, {number("patch", 20)}),
      applyBinarySection("A", {.duration = 22, .timestamp = 21}),
      executeIps({.duration = 24, .timestamp = 23},
                 {number("duration", 2000000), number("count", 100)}),
      deInit({.duration = 26, .timestamp = 25}, {number("free", 27)}),
  });
}

}  // namespace vyn::test
