#pragma once

#include <flatbuffers/flatbuffers.h>
#include <rapidjson/document.h>

#include "json/json_document.h"

namespace vyn::profiling {

/// A copy of a text up to its first zero byte, in the document's pool.
inline rapidjson::Value copiedJsonText(const char* text) {
  return rapidjson::Value(text, g_jsonDocument.GetAllocator());
}

/// The same for a text of the log; an absent one reads as the empty text.
inline rapidjson::Value copiedJsonText(const flatbuffers::String* text) {
  return copiedJsonText(text != nullptr ? text->c_str() : "");
}

}  // namespace vyn::profiling
