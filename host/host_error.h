#pragma once

#include <stdexcept>
#include <string>

namespace vyn::host {

/// A failure that ends the program: one line that names what failed, tells what happened and what
/// to do about it.
class HostError : public std::runtime_error {
 public:
  /// `subject` is mostly a file's name as the user gave it.
  HostError(const std::string& subject, const std::string& explanation)
      : std::runtime_error(subject + ": " + explanation) {}
};

/// Of a log.
inline constexpr char kNotEnoughMemory[] =
    "not enough memory to read it; free some memory or read a shorter log";

/// Nobody reads what the program writes any more: it ends quietly, as others do then.
class ClosedPipe : public HostError {
 public:
  using HostError::HostError;
};

/// What a system call's `error` number means to the user, and what to do: "no such file ...; ...".
std::string explain(int error);

/// Writes one line to standard error, behind the program's name. Names may hold what would break
/// the line or what a terminal obeys; it is escaped.
void reportLine(const std::string& text);

}  // namespace vyn::host
