#include "support/run_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <system_error>

namespace vyn::test {
namespace {

void check(int error, const char* what) {
  if (error != 0) {
    throw std::system_error(error, std::generic_category(), what);
  }
}

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (const std::string& text : texts) {
    pointers.push_back(const_cast<char*>(text.c_str()));
  }
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<std::string> environmentWith(const std::vector<std::string>& additions) {
  std::vector<std::string> environment = additions;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    environment.emplace_back(*variable);
  }
  return environment;
}

// Signals that a test runner may have been started with ignored.
void setDefaultSignals(posix_spawnattr_t& attributes) {
  sigset_t defaults;
  sigemptyset(&defaults);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE}) {
    sigaddset(&defaults, signal);
  }
  posix_spawnattr_setsigdefault(&attributes, &defaults);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
}

std::string contentOf(std::FILE* file) {
  std::string content;
  std::rewind(file);
  for (int byte = std::fgetc(file); byte != EOF; byte = std::fgetc(file)) {
    content += static_cast<char>(byte);
  }
  return content;
}

}  // namespace

RunningProgram::RunningProgram(const ProgramCall& call)
    : m_output(std::tmpfile(), std::fclose), m_errors(std::tmpfile(), std::fclose) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addchdir_np(&actions, call.directory.c_str());
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, fileno(m_output.get()), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, fileno(m_errors.get()), STDERR_FILENO);
  if (!call.standardOutput.empty()) {
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, call.standardOutput.c_str(),
                                     O_WRONLY | O_CREAT, 0666);
  }
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  setDefaultSignals(attributes);
  const std::vector<std::string> environment = environmentWith(call.environment);
  const int error = posix_spawnp(&m_process, call.words.front().c_str(), &actions, &attributes,
                                 pointersTo(call.words).data(), pointersTo(environment).data());
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  check(error, call.words.front().c_str());
}

RunningProgram::~RunningProgram() {
  if (m_process > 0) {
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
  }
}

void RunningProgram::send(int signal) const { check(kill(m_process, signal), "kill"); }

ProgramResult RunningProgram::wait() {
  int status = 0;
  while (waitpid(m_process, &status, 0) == -1) {
    check(errno == EINTR ? 0 : errno, "waitpid");
  }
  m_process = -1;
  ProgramResult result;
  result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  result.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  result.output = contentOf(m_output.get());
  result.errors = contentOf(m_errors.get());
  return result;
}

ProgramResult runProgram(const ProgramCall& call) { return RunningProgram(call).wait(); }

}  // namespace vyn::test
