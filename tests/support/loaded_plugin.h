#pragma once

#include <memory>
#include <string>

#include "vyn/profiling/reader_plugin.h"

namespace vyn::test {

/// A reader plug-in, loaded afresh: its process-wide state starts anew with each of these, provided
/// that no other one is alive.
class LoadedPlugin {
 public:
  using Reader = std::unique_ptr<profiling::ProfileLogReader, profiling::DeleteReader*>;

  explicit LoadedPlugin(const std::string& path);
  ~LoadedPlugin();
  LoadedPlugin(const LoadedPlugin&) = delete;
  LoadedPlugin& operator=(const LoadedPlugin&) = delete;

  Reader reader(const std::string& logPath, int visibility = 127) const;
  profiling::DeleteReader* deleteReader() const { return m_deleteReader; }

 private:
  void* m_library;
  profiling::CreateReader* m_createReader;
  profiling::DeleteReader* m_deleteReader;
};

}  // namespace vyn::test
