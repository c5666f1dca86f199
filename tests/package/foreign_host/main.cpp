// A host of its own, outside the project's tree: foreign_host LOG OUTPUT

#include <dlfcn.h>
#include <vyn/profiling/reader_plugin.h>

#include <iostream>

int main(int argc, char** argv) {
  if (argc != 3) {
    return 2;
  }
  void* library = dlopen(VYN_PLUGIN_DIR "/libVynJsonProfilingReader.so", RTLD_NOW);
  if (library == nullptr) {
    std::cerr << dlerror() << '\n';
    return 1;
  }
  auto* create = reinterpret_cast<vyn::profiling::CreateReader*>(dlsym(library, "createReader"));
  auto* destroy = reinterpret_cast<vyn::profiling::DeleteReader*>(dlsym(library, "deleteReader"));
  if (create == nullptr || destroy == nullptr) {
    return 1;
  }
  auto* reader = create(argv[1], vyn::profiling::VisibilityLevel{1});
  const bool done = reader->readInputFile(false) && reader->generateOutput(argv[2]);
  destroy(reader);
  dlclose(library);
  return done ? 0 : 1;
}
