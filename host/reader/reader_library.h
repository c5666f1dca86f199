#pragma once

#include <memory>
#include <string>

#include "host/reader/reader_names.h"
#include "vyn/profiling/reader_plugin.h"

namespace vyn::host {

/// A loaded reader library. It must outlive its readers and what they throw.
class ReaderLibrary {
 public:
  /// Throws FileError when the library is not found, cannot be loaded or lacks an export.
  explicit ReaderLibrary(const ReaderChoice& choice);

  /// Where the library was found.
  const std::string& path() const { return m_path; }

  /// The library's own operations, which may throw anything. The reader goes back to this library.
  profiling::ProfileLogReader* createReader(const std::string& logPath,
                                            profiling::VisibilityLevel level) const {
    return m_createReader(logPath, level);
  }
  void deleteReader(profiling::ProfileLogReader* reader) const { m_deleteReader(reader); }

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
