#include "host/output/output_limit.h"

#include <algorithm>

#include "base/saturating.h"
#include "files/file_error.h"

namespace vyn::host {
namespace {

constexpr std::uint64_t kLeast = std::uint64_t{1} << 30;  // bytes
constexpr std::uint64_t kTimesTheLog = 1000;

}  // namespace

OutputLimit OutputLimit::standardFor(const LogFile& log) {
  const auto size = static_cast<std::uint64_t>(log.canBeReadAgain() ? log.status.st_size : 0);
  return OutputLimit(std::max(kLeast, profiling::saturatingProduct(size, kTimesTheLog)),
                     ", far more than such a log should give");
}

void OutputLimit::check(std::uint64_t size, const std::string& target) const {
  if (size > m_bytes) {
    throw files::FileError(
        target,
        "the output is larger than " + std::to_string(m_bytes) + " bytes" + m_meaning +
            "; if you trust the log, give more with --max-output SIZE or --max-output none");
  }
}

EnforcedLimit::EnforcedLimit(const OutputLimit& limit, std::uint64_t present) {
  getrlimit(RLIMIT_FSIZE, &m_previous);
  // One byte more, which tells an output that is too large from one that just fits.
  const std::uint64_t largest =
      profiling::saturatingSum(profiling::saturatingSum(limit.bytes(), present), 1);
  // Beyond what a file's size can be, the system's limits do not work.
  const rlim_t limited = largest > INT64_MAX ? RLIM_INFINITY : largest;
  const rlimit lowered{std::min(limited, m_previous.rlim_cur), m_previous.rlim_max};
  setrlimit(RLIMIT_FSIZE, &lowered);
}

EnforcedLimit::~EnforcedLimit() { setrlimit(RLIMIT_FSIZE, &m_previous); }

}  // namespace vyn::host
