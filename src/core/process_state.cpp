// The objects that all readers of the process share. They stand in one file because their order
// here is the order of their construction when the library is loaded, and in reverse of their
// destruction when it is unloaded: the document and the registry go before the standard streams.

#include "core/process_state.h"

// Also makes the first initialiser of the standard streams, before all other objects: as long as
// the standard library does that for each file that includes it.
#include <iostream>

#include "json/json_document.h"
#include "log/logger_registry.h"

namespace vyn::profiling {

JsonDocument g_jsonDocument(rapidjson::kArrayType);
bool g_writeSingleObject = true;

}  // namespace vyn::profiling

namespace {

const std::ios_base::Init g_streamsAfterDocument;
const std::ios_base::Init g_streamsBeforeRegistry;

}  // namespace

namespace vyn::log {

LoggerRegistry g_loggerRegistry;
std::uint64_t g_currentLogger = 0;

}  // namespace vyn::log

namespace vyn::profiling {

std::ostream& standardOutput() { return std::cout; }

std::ostream& standardError() { return std::cerr; }

}  // namespace vyn::profiling
