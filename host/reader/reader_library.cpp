#include "host/reader/reader_library.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>
#include <vector>

#include "files/file_error.h"

namespace vyn::host {
namespace {

namespace fs = std::filesystem;

// In a build tree the libraries are in ../lib of the program.
std::vector<fs::path> searchedDirectories() {
  const fs::path programs = fs::read_symlink("/proc/self/exe").parent_path();
  std::vector<fs::path> directories = {programs};
  for (const char* place : {"../lib", VYN_PLUGIN_INSTALL_DIR}) {
    directories.push_back((programs / place).lexically_normal());
  }
  return directories;
}

bool isThere(const fs::path& path) {
  std::error_code error;
  return fs::exists(path, error);
}

std::string findLibrary(const std::string& library) {
  if (library.find('/') != std::string::npos) {
    if (!isThere(library)) {
      throw files::FileError(library, "no such reader library; check the name");
    }
    return library;
  }
  std::string places;
  for (const fs::path& directory : searchedDirectories()) {
    if (isThere(directory / library)) {
      return directory / library;
    }
    places += (places.empty() ? "" : ", ") + directory.string();
  }
  throw files::FileError(library, "reader library not found in " + places +
                                      "; install it there or give its path with --reader");
}

}  // namespace

ReaderLibrary::ReaderLibrary(const ReaderChoice& choice)
    : m_path(findLibrary(choice.library)), m_handle(dlopen(m_path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (m_handle == nullptr) {
    const std::string reason = dlerror();
    throw files::FileError(
        m_path, "cannot be loaded as a reader library (" + reason + "); give another --reader");
  }
  m_createReader = reinterpret_cast<profiling::CreateReader*>(findExport("createReader"));
  m_deleteReader = reinterpret_cast<profiling::DeleteReader*>(findExport("deleteReader"));
}

void* ReaderLibrary::findExport(const char* symbol) const {
  void* address = dlsym(m_handle.get(), symbol);
  if (address == nullptr) {
    throw files::FileError(m_path, std::string("not a reader library, for it does not export ") +
                                       symbol + "; give another --reader");
  }
  return address;
}

void ReaderLibrary::Unload::operator()(void* handle) const { dlclose(handle); }

}  // namespace vyn::host
