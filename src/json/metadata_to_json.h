#pragma once

#include <profile_log_generated.h>

#include <string>

#include "json/value_builder.h"

namespace vyn::profiling {

/// Sends what the document says of a log as a whole.
void metadataToJson(const schema::LogHeader& header, const std::string& inputLogFileLocation,
                    ValueBuilder& builder);

}  // namespace vyn::profiling
