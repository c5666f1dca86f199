#include "json/document_file.h"

#include <fstream>

#include "json/document_writer.h"
#include "json/json_document.h"
#include "log/logger_registry.h"

namespace vyn::profiling {
namespace {

// What the next output writes: first the one log that was read, later all of them; null when the
// first output finds not exactly one log.
const JsonValue* valueToWrite() {
  if (!g_writeSingleObject) {
    return &g_jsonDocument;
  }
  // Cleared even when nothing can be written: the next output is an array either way.
  g_writeSingleObject = false;
  return g_jsonDocument.Size() == 1 ? &g_jsonDocument[0] : nullptr;
}

// The writer stops at a number that JSON cannot hold; the text then ends there.
void writeText(const JsonValue& value, std::ostream& file) {
  BlockOutputStream text(file);
  DocumentWriter writer(text);
  value.Accept(writer);
  text.writeBlock();
  file << std::endl;
}

}  // namespace

bool writeDocument(const std::string& fileName) {
  if (fileName.empty()) {
    log::log(log::kError, "Output JSON file not provided.");
    return false;
  }
  std::ofstream file(fileName, std::ios::out);
  if (!file.good()) {
    log::log(log::kError, "Invalid output JSON file: [%s]", fileName.c_str());
    return false;
  }
  if (!file.is_open()) {
    log::log(log::kError, "Output JSON file not open.");
    return false;
  }
  const JsonValue* value = valueToWrite();
  if (value == nullptr) {
    return false;
  }
  writeText(*value, file);
  return true;
}

}  // namespace vyn::profiling
