#include "json/text_store.h"

#include <cstddef>
#include <cstring>

#include "json/json_document.h"

namespace vyn::profiling {
namespace {

// Texts of more bytes are known by their place in the chunk alone: looking at all their bytes each
// time they are named would take far longer than reading the log.
constexpr std::size_t kMaxComparedLength = 256;

std::string_view copyToPool(std::string_view text) {
  auto* copy = static_cast<char*>(g_jsonDocument.GetAllocator().Malloc(text.size() + 1));
  std::memcpy(copy, text.data(), text.size());
  copy[text.size()] = '\0';
  return {copy, text.size()};
}

}  // namespace

std::string_view TextStore::store(const flatbuffers::String& text) {
  if (text.size() <= kMaxComparedLength) {
    return storeByContent(text);
  }
  const auto [place, isNew] = m_byPlace.try_emplace(&text);
  if (isNew) {
    place->second = copyToPool(text.c_str());
  }
  return place->second;
}

std::string_view TextStore::storeByContent(const flatbuffers::String& text) {
  const std::string_view content = text.c_str();
  const auto found = m_texts.find(content);
  return found != m_texts.end() ? *found : *m_texts.insert(copyToPool(content)).first;
}

}  // namespace vyn::profiling
