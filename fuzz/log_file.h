#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vyn::fuzz {

/// A file in memory, with a path that readers can open.
class LogFile {
 public:
  LogFile(const std::uint8_t* bytes, std::size_t size);
  ~LogFile();
  LogFile(const LogFile&) = delete;
  LogFile& operator=(const LogFile&) = delete;

  std::string path() const;

 private:
  int m_descriptor;
};

}  // namespace vyn::fuzz
