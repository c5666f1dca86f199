#include "files/standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <iostream>

#include "files/file_descriptor.h"
#include "files/file_error.h"

namespace vyn::files {
namespace {

void fillDescriptor(int descriptor) {
  if (fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) {
    return;
  }
  // Standard input is opened for writing and standard output for reading, so that using them fails:
  // there is no input, and nobody would get the output. What goes to standard error is dropped.
  const int mode = descriptor == STDOUT_FILENO ? O_RDONLY : O_WRONLY;
  [[maybe_unused]] const int filled = open("/dev/null", mode);  // takes the lowest free number
}

}  // namespace

void prepareStandardStreams() {
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    fillDescriptor(descriptor);
  }
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

void flushStandardOutput() {
  std::cout.flush();
  std::fflush(stdout);
}

void finishStandardOutput() {
  errno = 0;
  flushStandardOutput();
  const int error = errno;
  if (std::cout.good() && std::ferror(stdout) == 0) {
    return;
  }
  const NamedFile standardOutput{STDOUT_FILENO, kStandardOutputName};
  if (error != 0 || isClosedPipe(STDOUT_FILENO)) {
    throwFailure(standardOutput, error);
  }
  // The number is lost, for the failing write was an earlier one.
  throw FileError(kStandardOutputName, "could not be written whole; check where it is directed to");
}

}  // namespace vyn::files
