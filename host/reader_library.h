#pragma once

#include <memory>
#include <string>

#include "reader_names.h"
#include "vyn/profiling/reader_plugin.h"

namespace vyn::host {

/// A reader that goes back to its own library's `deleteReader`.
using ReaderPointer = std::unique_ptr<profiling::ProfileLogReader, profiling::DeleteReader*>;

/// A loaded reader library. It must outlive its readers and what they throw.
class ReaderLibrary {
 public:
  /// Throws HostError when the library is not found, cannot be loaded or lacks an export.
  explicit ReaderLibrary(const ReaderChoice& choice);

  ReaderPointer makeReader(const std::string& logPath, profiling::VisibilityLevel level) const;

 private:
  struct Unload {
    void operator()(void* handle) const;
  };

  void* findExport(const char* symbol) const;

  std::string m_path;
  std::unique_ptr<void, Unload> m_handle;
  profiling::CreateReader* m_createReader = nullptr;
  profiling::DeleteReader* m_deleteReader = nullptr;
};

}  // namespace vyn::host
