#pragma once

#include <string>

namespace vyn::host {

/// While it lives, the file at its path is removed before SIGINT, SIGTERM or SIGHUP ends the
/// program. One at a time.
class RemovalOnSignal {
 public:
  explicit RemovalOnSignal(const std::string& path);
  ~RemovalOnSignal();
  RemovalOnSignal(const RemovalOnSignal&) = delete;
  RemovalOnSignal& operator=(const RemovalOnSignal&) = delete;
};

/// While it lives, those signals wait.
class SignalDelay {
 public:
  SignalDelay();
  ~SignalDelay();
  SignalDelay(const SignalDelay&) = delete;
  SignalDelay& operator=(const SignalDelay&) = delete;
};

}  // namespace vyn::host
