#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

#include "export/json/json_export.h"
#include "files/file_descriptor.h"
#include "files/temp_file.h"
#include "host/output/output_limit.h"

namespace vyn::host {

/// Writes a text to an open file, as long as it stays within a limit. Throws FileError, ClosedPipe.
class TextFile : public profiling::TextSink {
 public:
  TextFile(files::NamedFile file, const OutputLimit& limit)
      : m_file(std::move(file)), m_limit(limit) {}

  void write(std::string_view text) override;

 private:
  files::NamedFile m_file;
  OutputLimit m_limit;
  std::uint64_t m_size = 0;
};

/// Keeps a text in a temporary file, which is made when there is one to keep. Throws FileError.
class SpoolFile : public profiling::TextSpool {
 public:
  explicit SpoolFile(const OutputLimit& limit) : m_limit(limit) {}

  void write(std::string_view text) override;
  void replay(profiling::TextSink& sink, std::size_t skipped) override;

 private:
  OutputLimit m_limit;
  std::optional<files::TempFile> m_temp;
  std::optional<TextFile> m_text;
};

}  // namespace vyn::host
