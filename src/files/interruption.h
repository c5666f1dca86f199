#pragma once

#include <csignal>
#include <cstddef>
#include <string>

namespace vyn::files {

/// While it lives, the file at its path is removed before a signal ends the program. Up to four at
/// a time.
class RemovalOnSignal {
 public:
  explicit RemovalOnSignal(const std::string& path);
  ~RemovalOnSignal();
  RemovalOnSignal(const RemovalOnSignal&) = delete;
  RemovalOnSignal& operator=(const RemovalOnSignal&) = delete;

 private:
  std::size_t m_slot;
};

/// While it lives, the signals that others send to end the program wait.
class SignalDelay {
 public:
  SignalDelay();
  ~SignalDelay();
  SignalDelay(const SignalDelay&) = delete;
  SignalDelay& operator=(const SignalDelay&) = delete;

 private:
  sigset_t m_previous;
};

/// Ends the program as a write to a closed pipe does by default: at once and without a message.
[[noreturn]] void dieOfClosedPipe();

}  // namespace vyn::files
