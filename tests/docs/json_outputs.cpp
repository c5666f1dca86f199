// Reads logs in one process: json_outputs LIBRARY FOLDER LOG...
// Writes FOLDER/object.json after the first log and FOLDER/array.json after the last.

#include <dlfcn.h>

#include <string>
#include <vector>

#include "vyn/profiling/reader_plugin.h"

namespace {

using vyn::profiling::CreateReader;
using vyn::profiling::DeleteReader;

bool readAndWrite(void* library, const std::string& log, const std::string& output) {
  auto* create = reinterpret_cast<CreateReader*>(dlsym(library, "createReader"));
  auto* destroy = reinterpret_cast<DeleteReader*>(dlsym(library, "deleteReader"));
  auto* reader = create(log, vyn::profiling::VisibilityLevel{127});
  const bool done = reader->readInputFile(false) && reader->generateOutput(output);
  destroy(reader);
  return done;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv, argv + argc);
  void* library = argc > 3 ? dlopen(argv[1], RTLD_NOW) : nullptr;
  if (library == nullptr) {
    return 2;
  }
  const std::string& folder = arguments[2];
  std::string output = folder + "/object.json";
  for (std::size_t i = 3; i < arguments.size(); ++i) {
    if (!readAndWrite(library, arguments[i], output)) {
      return 1;
    }
    output = folder + "/array.json";
  }
  return 0;
}
