#include "text_files.h"

#include <unistd.h>

#include <cerrno>
#include <vector>

#include "host_error.h"
#include "saturating.h"
#include "scratch_directory.h"

namespace vyn::host {
namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 18;  // bytes

}  // namespace

void TextFile::write(std::string_view text) {
  m_size = saturatingSum(m_size, text.size());
  m_limit.check(m_size, m_file.name);
  writeAll(m_file, text.data(), text.size());
}

void SpoolFile::write(std::string_view text) {
  if (text.empty()) {
    return;
  }
  if (!m_temp) {
    m_temp.emplace(scratchDirectory(), "vyn-profile-viewer", scratchDirectory());
    m_text.emplace(m_temp->file(), m_limit);
  }
  m_text->write(text);
}

void SpoolFile::replay(profiling::TextSink& sink, std::size_t skipped) {
  if (!m_temp) {
    return;
  }
  const NamedFile file = m_temp->file();
  std::vector<char> block(kBlockSize);
  auto offset = static_cast<off_t>(skipped);
  for (;;) {
    const ssize_t count = pread(file.descriptor, block.data(), block.size(), offset);
    if (count < 0 && errno != EINTR) {
      throwFailure(file, errno);
    }
    if (count == 0) {
      return;
    }
    if (count > 0) {
      sink.write({block.data(), static_cast<std::size_t>(count)});
      offset += count;
    }
  }
}

}  // namespace vyn::host
