// What any reader of a log has to do at least: reads it chunk by chunk, verifies each, and makes
// nothing of what it holds. Usage: walk_log INPUT

#include <cstdlib>

#include "input/log_walk.h"

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) {
    return 2;
  }
  vyn::profiling::FileSource source(arguments[1]);
  vyn::profiling::NoSink sink;
  return vyn::profiling::walkLog(source, sink).isAccepted ? EXIT_SUCCESS : EXIT_FAILURE;
}
