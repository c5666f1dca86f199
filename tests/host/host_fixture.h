#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/log_message.h"
#include "support/run_program.h"
#include "support/temp_folder.h"

namespace vyn::test {

/// Runs the program in a directory of the test's own, which is also its TMPDIR's parent.
class HostTest : public testing::Test {
 protected:
  HostTest();

  const std::filesystem::path& directory() const { return m_directory; }
  std::filesystem::path scratch() const { return m_directory / "scratch"; }

  void write(const std::string& name, const std::string& content) const;
  std::string read(const std::string& name) const;

  /// The names in the directory, sorted; "scratch" only when something was left in it.
  std::vector<std::string> names() const;

  ProgramCall call(std::vector<std::string> arguments) const;
  ProgramResult run(std::vector<std::string> arguments) const;
  /// The shell's `script` finds the program as $0 and the arguments as $@.
  ProgramResult runInShell(const std::string& script, std::vector<std::string> arguments) const;

 private:
  TempFolder m_folder;
  std::filesystem::path m_directory;  // without symbolic links
};

/// A log without a header, of one chunk with as many executions of the graph "net".
std::string logOfExecutions(std::size_t count);

/// An event named "run" with this double value.
Event doubleEvent(double value);

/// A log of one chunk with a header and one execution, whose only event took three microseconds.
std::string smallLog();

/// A log whose document has more than `size` bytes.
std::string logWithDocumentOver(std::size_t size);

/// A line of the program's own on standard error.
std::string ownLine(const std::string& text);

/// Matches a whole result: exit status and standard error, here one line of the program's own.
MATCHER_P(FailsWith, line, "exits with 1 and says: " + std::string(line)) {
  *result_listener << "exits with " << arg.exitStatus << " and says: " << arg.errors;
  return arg.exitStatus == 1 && arg.errors == ownLine(line);
}

MATCHER(SucceedsQuietly, "exits with 0 and says nothing") {
  *result_listener << "exits with " << arg.exitStatus << " and says: " << arg.errors;
  return arg.exitStatus == 0 && arg.errors.empty();
}

}  // namespace vyn::test
