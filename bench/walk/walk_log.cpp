// What any reader of a log has to do at least: reads it chunk by chunk, verifies each, and makes
// nothing of what it holds. Usage: walk_log INPUT

#include <cstdlib>

#include "input/log_walk.h"

namespace {

class NoSink : public vyn::profiling::MessageSink {
 public:
  void message(const vyn::profiling::schema::Message& /*message*/) override {}
};

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) {
    return 2;
  }
  vyn::profiling::FileSource source(arguments[1]);
  NoSink sink;
  return vyn::profiling::walkLog(source, sink).isAccepted ? EXIT_SUCCESS : EXIT_FAILURE;
}
