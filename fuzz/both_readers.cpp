#include "both_readers.h"

#include <filesystem>

#include "check.h"
#include "core/vyn_profile_log_reader_json.h"
#include "document_size.h"
#include "hashed_output.h"
#include "json/json_document.h"
#include "summary_run.h"
#include "table_total.h"
#include "time_limit.h"

namespace vyn::fuzz {
namespace {

using profiling::g_jsonDocument;

/// What one run of the JSON reader gave.
struct JsonOutput {
  bool isSound = false;
  std::size_t messageCount = 0;
  std::uint64_t document = 0;  // hash of the file

  bool operator==(const JsonOutput&) const = default;
};

// Leaves the document's memory behind.
JsonOutput runJsonReader(const std::string& logPath) {
  const TimeLimit limit(std::filesystem::file_size(logPath), tablesOf(logPath));
  profiling::VynProfileLogReaderJSON reader(logPath, profiling::VisibilityLevel{127});
  JsonOutput output;
  output.isSound = reader.readInputFile(false);
  if (output.isSound) {
    output.messageCount = (g_jsonDocument.End() - 1)->FindMember("messages")->value.Size();
    profiling::g_writeSingleObject = true;
    HashedFile file;
    check(reader.generateOutput(file.path()), "what the JSON reader read can be written");
    output.document = file.finish();
  }
  g_jsonDocument.SetArray();
  return output;
}

}  // namespace

Verdict readWithBoth(const std::string& logPath) {
  const std::size_t size = std::filesystem::file_size(logPath);
  const SummaryRun summary(logPath);
  check(SummaryRun(logPath).outputs() == summary.outputs(),
        "the summary reader says the same again");
  const bool isSound = summary.outputs().isSound;
  const JsonOutput json = runJsonReader(logPath);
  check(json.isSound == isSound, "both readers judge the log alike");
  check(!isSound || json.messageCount == summary.messageCount(),
        "both readers see the same messages");
  check(isInProportion(g_jsonDocument.GetAllocator().Size(), size, tablesOf(logPath)),
        "the document's memory is in proportion to the log");
  check(runJsonReader(logPath) == json, "the JSON reader writes the same again");
  g_jsonDocument.GetAllocator().Clear();
  return {isSound, summary.messageCount()};
}

}  // namespace vyn::fuzz
