#include "support/json_log.h"

#include <flatbuffers/idl.h>

#include <cstdint>
#include <stdexcept>

#include "support/text_file.h"

namespace vyn::test {

std::string chunkBytes(const std::string& json) {
  flatbuffers::IDLOptions options;
  options.no_warnings = true;
  flatbuffers::Parser parser(options);
  if (!parser.Parse(readFile(VYN_SCHEMA_FILE).c_str()) || !parser.Parse(json.c_str())) {
    throw std::invalid_argument(parser.error_);
  }
  const auto* bytes = reinterpret_cast<const char*>(parser.builder_.GetBufferPointer());
  return {bytes, parser.builder_.GetSize()};
}

// Spelled out by itself, so that what the readers take for a length is tested against it.
std::string lengthBytes(std::size_t length) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    bytes.push_back(static_cast<char>(length >> shift & 0xFF));
  }
  return bytes;
}

std::string framed(const std::string& bytes) { return lengthBytes(bytes.size()) + bytes; }

std::string logOf(std::initializer_list<std::string> chunks) {
  std::string log;
  for (const std::string& chunk : chunks) {
    log += framed(chunkBytes(chunk));
  }
  return log;
}

}  // namespace vyn::test
