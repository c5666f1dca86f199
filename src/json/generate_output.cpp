#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <fstream>

#include "core/start_logging.h"
#include "json/json_document.h"
#include "json/vyn_profile_log_reader_json.h"
#include "log/logger_registry.h"

namespace vyn::profiling {
namespace {

using TextWriter = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

// Writes the one log that was read; false when it is not exactly one. The writer stops at a number
// that JSON cannot hold, and the text then ends there.
bool writeSingleObject(TextWriter& writer) {
  if (g_jsonDocument.Size() != 1) {
    return false;
  }
  rapidjson::Document copy(rapidjson::kObjectType);
  copy.CopyFrom(g_jsonDocument[0], copy.GetAllocator());
  copy.Accept(writer);
  return true;
}

}  // namespace

bool VynProfileLogReaderJSON::generateOutput(const std::string& outputFileName) {
  if (!startLogging()) {
    return false;
  }
  if (outputFileName.empty()) {
    log::log(log::kError, "Output JSON file not provided.");
    return false;
  }
  std::ofstream file(outputFileName, std::ios::out);
  if (!file.good()) {
    log::log(log::kError, "Invalid output JSON file: [%s]", outputFileName.c_str());
    return false;
  }
  if (!file.is_open()) {
    log::log(log::kError, "Output JSON file not open.");
    return false;
  }
  rapidjson::StringBuffer text;
  TextWriter writer(text);
  if (g_writeSingleObject) {
    // Cleared even when the write below fails: the next output is an array either way.
    g_writeSingleObject = false;
    if (!writeSingleObject(writer)) {
      return false;
    }
  } else {
    g_jsonDocument.Accept(writer);
  }
  file << text.GetString() << std::endl;
  return true;
}

}  // namespace vyn::profiling
