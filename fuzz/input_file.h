#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vyn::fuzz {

/// A temporary file with an input's bytes, for readers open logs by their path. It is removed with
/// this.
class InputFile {
 public:
  InputFile(const std::uint8_t* bytes, std::size_t size);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  /// Absolute, so that it holds in whatever folder a run works.
  const std::string& path() const { return m_path; }

 private:
  std::string m_path;
};

}  // namespace vyn::fuzz
