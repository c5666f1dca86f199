#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "files/file_descriptor.h"
#include "host/recover/byte_digest.h"
#include "json/json_text.h"

namespace vyn::host {

/// Writes to an open file and keeps what tells whether the file holds what was written.
class DigestedFile : public profiling::TextSink {
 public:
  explicit DigestedFile(files::NamedFile file);

  /// Throws FileError, ClosedPipe.
  void write(std::string_view bytes) override;

  /// Throws FileError unless the file at `path`, read anew, holds what was written, and no more.
  /// `name` is what messages call it.
  void check(const std::string& path, const std::string& name) const;

 private:
  void startWriteBack();

  files::NamedFile m_file;
  ByteDigest m_digest;
  std::uint64_t m_written = 0;  // bytes
  std::uint64_t m_sent = 0;     // bytes that are on their way to the disk
};

}  // namespace vyn::host
