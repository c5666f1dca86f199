#include "analysis/log_check.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "support/shared_log.h"

namespace vyn::profiling {
namespace {

Findings findingsOf(const std::string& log) {
  MemorySource source({reinterpret_cast<const std::uint8_t*>(log.data()), log.size()});
  LogCheck check;
  return check.finish(walkLog(source, check));
}

// Looking at the name each time would use up what may be looked at.
TEST(LogCheck, ASharedNameIsLookedAtOnceInAnyScript) {
  for (const std::string& letter : {std::string("n"), std::string("\u00e4")}) {
    for (const std::size_t size : {std::size_t{60}, std::size_t{300}}) {
      std::string name;
      while (name.size() < size) {
        name += letter;
      }
      const Findings findings = findingsOf(test::logOfSharedPayload(100'000, name));
      EXPECT_EQ(findings.count(CheckCode::kTextsNotRead), 0U) << name;
      EXPECT_EQ(findings.count(CheckCode::kNotUtf8), 0U) << name;
    }
  }
}

}  // namespace
}  // namespace vyn::profiling
