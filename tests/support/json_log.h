#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>

namespace vyn::test {

/// The bytes of one chunk, without its length, from a text in the JSON form of the schema. Written
/// by the FlatBuffers library's own parser: keys may stand without quotes, enumerations by name or
/// number; what is left out is absent from the chunk.
std::string chunkBytes(const std::string& json);

/// A length as it stands in front of a chunk, of a text and of a list: four bytes, lowest first.
std::string lengthBytes(std::size_t length);

/// A chunk with its length in front.
std::string framed(const std::string& bytes);

/// A whole log of one chunk for each text.
std::string logOf(std::initializer_list<std::string> chunks);

}  // namespace vyn::test
