#pragma once

#include <flatbuffers/flatbuffers.h>

#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "input/text_hash.h"

namespace vyn::profiling {

/// Copies texts of one log into the pool of g_jsonDocument, equal ones once: the events of a log
/// name the same nodes over and over, and a hostile log may name one long text from every event.
class TextStore {
 public:
  /// The text up to its first zero byte, NUL-terminated; it lives as long as the document. `text`
  /// belongs to the current chunk.
  std::string_view store(const flatbuffers::String& text);

  /// To be called before the first text of each chunk, whose places mean nothing any more.
  void startChunk() { m_byPlace.clear(); }

 private:
  std::string_view storeByContent(const flatbuffers::String& text);

  std::unordered_set<std::string_view, TextHash> m_texts;
  std::unordered_map<const flatbuffers::String*, std::string_view> m_byPlace;
};

}  // namespace vyn::profiling
