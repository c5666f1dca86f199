#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstdint>
#include <map>
#include <string_view>
#include <unordered_set>

#include "base/text_hash.h"

namespace vyn::profiling {

/// Copies texts of one log into the pool of g_jsonDocument, equal ones once: the events of a log
/// name the same nodes over and over. Whatever a log's texts share, its copies take no more memory
/// than the log itself, and of a long text no byte is looked at twice.
class TextStore {
 public:
  /// The text up to its first zero byte, NUL-terminated; it lives as long as the document. `text`
  /// belongs to the current chunk; without one, each text is copied by itself.
  std::string_view store(const flatbuffers::String& text);

  /// To be called before the first text of each chunk, with the chunk's first byte.
  void startChunk(const std::uint8_t* chunk);

  /// To be called behind the last chunk. Frees what is remembered of the log; the copies stay.
  void endLog();

 private:
  // The bytes of the chunk between two zero bytes, and their copy.
  struct Run {
    const char* begin;
    std::string_view copy;
  };

  std::string_view storeByContent(std::string_view text);
  std::string_view storeByPlace(const char* text);
  const Run& copyRunOf(const char* text);

  const char* m_chunk = nullptr;
  std::unordered_set<std::string_view, TextHash> m_texts;
  // By their end in the chunk. Ordered, for no log can choose places that are slow to find, and
  // clearing it costs no more than what it holds.
  std::map<const char*, Run> m_runs;
};

}  // namespace vyn::profiling
