#pragma once

#include <cstddef>
#include <string_view>

#include "files/file_descriptor.h"

namespace vyn::host {

/// The bytes of a file of the program's own, without a copy of them. The file must not shrink while
/// it lives.
class MappedFile {
 public:
  /// Throws FileError.
  explicit MappedFile(const files::NamedFile& file);
  ~MappedFile();
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  std::string_view text() const { return {m_bytes, m_size}; }

 private:
  const char* m_bytes = nullptr;
  std::size_t m_size;
};

}  // namespace vyn::host
