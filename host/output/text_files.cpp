#include "host/output/text_files.h"

#include "base/saturating.h"
#include "host/output/scratch_directory.h"
#include "host/report_line.h"

namespace vyn::host {

void TextFile::write(std::string_view text) {
  m_size = profiling::saturatingSum(m_size, text.size());
  m_limit.check(m_size, m_file.name);
  files::writeAll(m_file, text);
}

void SpoolFile::write(std::string_view text) {
  if (text.empty()) {
    return;
  }
  if (!m_temp) {
    m_temp.emplace(scratchDirectory(), kProgramName, scratchDirectory());
    m_text.emplace(m_temp->file(), m_limit);
  }
  m_text->write(text);
}

void SpoolFile::replay(profiling::TextSink& sink, std::size_t skipped) {
  if (m_temp) {
    files::readFrom(m_temp->file(), skipped, [&sink](std::string_view text) { sink.write(text); });
  }
}

}  // namespace vyn::host
