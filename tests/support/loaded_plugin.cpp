#include "support/loaded_plugin.h"

#include <dlfcn.h>

#include <stdexcept>

namespace vyn::test {
namespace {

void* open(const std::string& path) {
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  return library != nullptr ? library : throw std::runtime_error(dlerror());
}

}  // namespace

LoadedPlugin::LoadedPlugin(const std::string& path)
    : m_library(open(path)),
      m_createReader(reinterpret_cast<profiling::CreateReader*>(dlsym(m_library, "createReader"))),
      m_deleteReader(reinterpret_cast<profiling::DeleteReader*>(dlsym(m_library, "deleteReader"))) {
}

LoadedPlugin::~LoadedPlugin() { dlclose(m_library); }

LoadedPlugin::Reader LoadedPlugin::reader(const std::string& logPath, int visibility) const {
  return {m_createReader(logPath, static_cast<profiling::VisibilityLevel>(visibility)),
          m_deleteReader};
}

}  // namespace vyn::test
