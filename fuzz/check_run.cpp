#include "check_run.h"

#include <string>

#include "analysis/chunk_fault.h"
#include "analysis/log_check.h"
#include "check.h"
#include "table_total.h"
#include "time_limit.h"

namespace vyn::fuzz {
namespace {

using profiling::CheckCode;
using profiling::Finding;
using profiling::Findings;
using profiling::Severity;

bool hasFault(const profiling::Chunk& chunk, std::uint64_t freeTables) {
  return profiling::findChunkFault(chunk.bytes(), chunk.size + freeTables).has_value();
}

// Holds the second reading of each chunk against the verifier's verdict.
class JudgedCheck : public profiling::LogCheck {
 public:
  void chunk(const profiling::Chunk& chunk, const profiling::ChunkPlace& place) override {
    check(!hasFault(chunk, profiling::ChunkVerifier::kSharedTableAllowance),
          "a chunk that verifies has no flaw");
    LogCheck::chunk(chunk, place);
  }
  void refused(const profiling::Chunk& chunk, const profiling::ChunkPlace& place) override {
    check(hasFault(chunk, 0), "a chunk that does not verify has a flaw");
    LogCheck::refused(chunk, place);
  }
};

std::string textOf(const Finding& finding) {
  return std::to_string(static_cast<int>(finding.code)) + " " + std::to_string(finding.chunk) +
         " " + std::to_string(finding.message) + " " + std::to_string(finding.offset) + " " +
         finding.evidence.found + " " + finding.evidence.expected + "\n";
}

void checkFinding(const Finding& finding, std::size_t logSize) {
  constexpr std::size_t kMaxText = 500;  // bytes
  check(finding.offset <= logSize, "a finding is in the log");
  check(finding.evidence.found.size() + finding.evidence.expected.size() <= kMaxText,
        "a finding has no long texts");
  check(finding.code != CheckCode::kUnexplained, "every damage is explained");
}

std::string findingsOf(std::span<const std::uint8_t> log) {
  profiling::MemorySource source(log);
  JudgedCheck judged;
  const profiling::WalkResult walk = profiling::walkLog(source, judged);
  const Findings findings = judged.finish(walk);
  check(findings.kept().size() <= profiling::kCheckCodeCount * Findings::kMaxKept,
        "no more findings are kept than may be");
  check(walk.isAccepted || findings.count(Severity::kError) == 1, "damage is told once");
  std::string text;
  for (const Finding& finding : findings.kept()) {
    checkFinding(finding, log.size());
    text += textOf(finding);
  }
  return text;
}

}  // namespace

void checkFindings(std::span<const std::uint8_t> log) {
  profiling::MemorySource source(log);
  const std::uint64_t tables = tablesOf(source);
  const TimeLimit limit(log.size(), tables);
  const std::string findings = findingsOf(log);
  check(findingsOf(log) == findings, "the same is found again");
}

}  // namespace vyn::fuzz
