#pragma once

#include <stdexcept>
#include <string>

namespace vyn::files {

/// A failure that ends the program: one line that names what failed, tells what happened and what
/// to do about it.
class FileError : public std::runtime_error {
 public:
  /// `subject` is mostly a file's name as the user gave it.
  FileError(const std::string& subject, const std::string& explanation)
      : std::runtime_error(subject + ": " + explanation) {}
};

/// Nobody reads what the program writes any more: it ends quietly, as others do then.
class ClosedPipe : public FileError {
 public:
  using FileError::FileError;
};

/// What a system call's `error` number means to the user, and what to do: "no such file ...; ...".
std::string explain(int error);

}  // namespace vyn::files
