#include "json/text_store.h"

#include <cstring>

#include "json/json_document.h"

namespace vyn::profiling {
namespace {

// Texts of more bytes, zeros among them counted, are known by their place in the chunk alone:
// looking at all their bytes each time they are named would take far longer than reading the log.
constexpr std::size_t kMaxComparedLength = 256;

std::string_view copyToPool(std::string_view text) {
  auto* copy = static_cast<char*>(g_jsonDocument.GetAllocator().Malloc(text.size() + 1));
  std::memcpy(copy, text.data(), text.size());
  copy[text.size()] = '\0';
  return {copy, text.size()};
}

}  // namespace

void TextStore::startChunk(const std::uint8_t* chunk) {
  m_chunk = reinterpret_cast<const char*>(chunk);
  m_runs.clear();
}

std::string_view TextStore::store(const flatbuffers::String& text) {
  const std::string_view content = text.c_str();
  return text.size() <= kMaxComparedLength ? storeByContent(content) : storeByPlace(content);
}

std::string_view TextStore::storeByContent(std::string_view text) {
  const auto found = m_texts.find(text);
  return found != m_texts.end() ? *found : *m_texts.insert(copyToPool(text)).first;
}

// Texts of a hostile chunk may overlap, each starting a few bytes behind the last and all ending at
// the same zero byte. (Shorter ones cannot: the length in front of each has zero bytes.) The bytes
// between two zeros are therefore copied as one run, once, and each text is the end of its run.
std::string_view TextStore::storeByPlace(std::string_view text) {
  const char* end = text.data() + text.size();
  const auto [entry, isNew] = m_runs.try_emplace(end);
  if (isNew) {
    entry->second = copyToPool(runUpTo(end));
  }
  const std::string_view run = entry->second;
  return run.substr(run.size() - text.size());
}

std::string_view TextStore::runUpTo(const char* end) const {
  const char* start = end;
  while (start > m_chunk && start[-1] != '\0') {
    --start;
  }
  return {start, static_cast<std::size_t>(end - start)};
}

}  // namespace vyn::profiling
