#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/input/log_file.h"

namespace vyn::host {

/// What a log says of the payloads that go to files of one name.
struct PayloadName {
  std::string name;               ///< as the log has it
  std::string event;              ///< the first event with this name, for messages
  std::set<std::uint64_t> sizes;  ///< bytes of each payload
  std::uint64_t writes = 0;       ///< how many files there may be at most
};

struct PayloadSurvey {
  std::vector<PayloadName> names;
  std::uint64_t bytes = 0;  ///< of all files together and of their names, at most; 4,096 for
                            ///< a smaller file
};

/// Goes through the sound chunks of the log, before any reader does. Every OBJECT event counts,
/// even one that a reader leaves out; the time is in proportion to the log.
PayloadSurvey surveyPayloads(const LogFile& log);

/// A text of a log for a message: cut when it is long.
std::string shortened(std::string_view text);

}  // namespace vyn::host
