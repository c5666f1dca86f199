#include "host/check/findings_text.h"

#include <set>

#include "files/printable_text.h"
#include "host/output/shown_numbers.h"

namespace vyn::host {
namespace {

using profiling::CheckCode;
using profiling::CheckCodeEntry;
using profiling::Finding;
using profiling::Findings;
using profiling::Severity;

std::string nameOf(const CheckCodeEntry& entry) {
  return std::string(entry.severity == Severity::kError ? "error " : "warning ") + entry.name;
}

// Numbers that are looked up elsewhere stand as programs take them.
std::string placeOf(const Finding& finding) {
  if (finding.chunk == 0) {
    return "";
  }
  return ", chunk " + std::to_string(finding.chunk) +
         (finding.message == 0 ? "" : ", message " + std::to_string(finding.message)) + ", byte " +
         std::to_string(finding.offset);
}

std::string lineOf(const Finding& finding) {
  const CheckCodeEntry& entry = entryOf(finding.code);
  return nameOf(entry) + placeOf(finding) + ": " + entry.meaning + ": " + finding.evidence.found +
         "; expected " + finding.evidence.expected;
}

std::string summaryOf(const Findings& findings) {
  const std::uint64_t errors = findings.count(Severity::kError);
  const std::uint64_t warnings = findings.count(Severity::kWarning);
  std::string text;
  if (errors + warnings == 0) {
    text = "sound: ";
  } else {
    text = errors == 0 ? "" : groupedCount(errors, "error");
    text += errors == 0 || warnings == 0 ? "" : ", ";
    text += warnings == 0 ? "" : groupedCount(warnings, "warning");
    text += " in ";
  }
  return text + groupedCount(findings.chunks, "chunk") + ", " +
         groupedCount(findings.messages, "message");
}

}  // namespace

void printFindings(const Findings& findings, const std::string& log, std::ostream& out) {
  const auto print = [&](const std::string& line) {
    out << files::printable(log + ": " + line, files::LineFeeds::kEscaped) << '\n';
  };
  std::set<CheckCode> told;
  for (const Finding& finding : findings.kept()) {
    print(lineOf(finding));
    if (told.insert(finding.code).second) {
      print(std::string("  ") + entryOf(finding.code).remedy);
    }
  }
  for (const CheckCode code : told) {
    if (const std::uint64_t count = findings.count(code); count > Findings::kMaxKept) {
      print(nameOf(entryOf(code)) + ": " + grouped(count - Findings::kMaxKept) + " more");
    }
  }
  print(summaryOf(findings));
}

}  // namespace vyn::host
