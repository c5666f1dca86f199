#include "output_limit.h"

#include <algorithm>
#include <exception>
#include <limits>

#include "host_error.h"
#include "saturating.h"
#include "standard_streams.h"

namespace vyn::host {
namespace {

constexpr std::uint64_t kLeast = std::uint64_t{1} << 30;  // bytes
constexpr std::uint64_t kTimesTheLog = 1000;

}  // namespace

OutputLimit OutputLimit::standardFor(const LogFile& log) {
  const auto size = static_cast<std::uint64_t>(log.canBeReadAgain() ? log.status.st_size : 0);
  return OutputLimit(std::max(kLeast, saturatingProduct(size, kTimesTheLog)));
}

void OutputLimit::check(std::uint64_t size, const std::string& target) const {
  if (size > m_bytes) {
    throw HostError(target, "the output is larger than " + std::to_string(m_bytes) +
                                " bytes, far more than such a log should give; if you trust the "
                                "log, give more with --max-output SIZE or --max-output none");
  }
}

EnforcedLimit::EnforcedLimit(const OutputLimit& limit, std::uint64_t present) : m_limit(limit) {
  getrlimit(RLIMIT_FSIZE, &m_previous);
  // One byte more, which tells an output that is too large from one that just fits.
  const std::uint64_t largest = saturatingSum(saturatingSum(limit.bytes(), present), 1);
  if (largest >= static_cast<std::uint64_t>(std::numeric_limits<off_t>::max()) ||
      m_previous.rlim_cur <= largest) {
    return;
  }
  m_console = std::make_unique<ConsoleCapture>();
  const rlimit lowered{largest, m_previous.rlim_max};
  setrlimit(RLIMIT_FSIZE, &lowered);
}

EnforcedLimit::~EnforcedLimit() {
  try {
    lift();
  } catch (const std::exception&) {  // another error is on its way, maybe for want of memory
  }
}

void EnforcedLimit::lift() {
  const std::unique_ptr<ConsoleCapture> console = std::move(m_console);
  if (console == nullptr) {
    return;
  }
  console->end();
  setrlimit(RLIMIT_FSIZE, &m_previous);
  m_limit.check(console->size(), kStandardOutputName);
  console->passOn();
}

}  // namespace vyn::host
