#pragma once

#include <rapidjson/prettywriter.h>

#include "json/block_output_stream.h"
#include "json/escaping.h"
#include "json/throwing_allocator.h"

namespace vyn::profiling {

/// RapidJSON's pretty writer, with a short cut for texts that need no escaping: they are copied in
/// one piece instead of byte by byte. The text that comes out is the same. It stops at the first
/// key or text behind a block that could not be written, for a document may be far larger than its
/// log.
class DocumentWriter : public rapidjson::PrettyWriter<BlockOutputStream, rapidjson::UTF8<>,
                                                      rapidjson::UTF8<>, ThrowingAllocator> {
 public:
  explicit DocumentWriter(BlockOutputStream& stream) : PrettyWriter(stream) {}

  bool String(const char* text, rapidjson::SizeType length, bool copy) {
    if (needsEscaping({text, length})) {
      return PrettyWriter::String(text, length, copy) && !os_->hasFailed();
    }
    putQuoted(text, length);
    return !os_->hasFailed();
  }

  // Keys are literals of the readers, none of which needs escaping.
  bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
    putQuoted(text, length);
    return !os_->hasFailed();
  }

 private:
  void putQuoted(const char* text, rapidjson::SizeType length) {
    PrettyPrefix(rapidjson::kStringType);
    os_->Put('"');
    os_->put(text, length);
    os_->Put('"');
  }
};

}  // namespace vyn::profiling
