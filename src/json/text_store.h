#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "input/text_hash.h"

namespace vyn::profiling {

/// Copies texts of one log into the pool of g_jsonDocument, equal ones once: the events of a log
/// name the same nodes over and over. Whatever a log's texts share, its copies take no more memory
/// than the log itself.
class TextStore {
 public:
  /// The text up to its first zero byte, NUL-terminated; it lives as long as the document. `text`
  /// belongs to the current chunk.
  std::string_view store(const flatbuffers::String& text);

  /// To be called before the first text of each chunk, with the chunk's first byte.
  void startChunk(const std::uint8_t* chunk);

 private:
  std::string_view storeByContent(std::string_view text);
  std::string_view storeByPlace(std::string_view text);
  std::string_view runUpTo(const char* end) const;

  const char* m_chunk = nullptr;
  std::unordered_set<std::string_view, TextHash> m_texts;
  std::unordered_map<const char*, std::string_view>
      m_runs;  // copies, by the run's end in the chunk
};

}  // namespace vyn::profiling
