#pragma once

#include <sys/types.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace vyn::test {

struct ProgramCall {
  std::vector<std::string> words;  ///< the program, then its arguments
  std::string directory = ".";
  std::vector<std::string> environment = {};  ///< NAME=VALUE, before the caller's own
  std::string standardOutput = {};            ///< file to write to; empty: captured
};

struct ProgramResult {
  int exitStatus = -1;  ///< -1 when a signal ended the program
  int signal = 0;
  std::string output;
  std::string errors;
};

/// A child process with an empty standard input and default signal actions.
class RunningProgram {
 public:
  explicit RunningProgram(const ProgramCall& call);
  /// Kills the program if nobody waited for it.
  ~RunningProgram();
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;

  void send(int signal) const;
  ProgramResult wait();

 private:
  using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

  File m_output;
  File m_errors;
  pid_t m_process = -1;
};

ProgramResult runProgram(const ProgramCall& call);

}  // namespace vyn::test
