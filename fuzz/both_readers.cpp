#include "both_readers.h"

#include <filesystem>

#include "check.h"
#include "core/vyn_profile_log_reader.h"
#include "document_size.h"
#include "json/json_document.h"
#include "json/vyn_profile_log_reader_json.h"
#include "quiet_streams.h"
#include "table_total.h"
#include "time_limit.h"

namespace vyn::fuzz {
namespace {

using profiling::g_jsonDocument;

constexpr profiling::VisibilityLevel kHighestLevel{127};

class CountingReader : public profiling::VynProfileLogReader {
 public:
  using VynProfileLogReader::VynProfileLogReader;

  bool processNextMessage() override {
    const bool taken = VynProfileLogReader::processNextMessage();
    m_count += m_reachedEof ? 0 : 1;
    return taken;
  }

  std::size_t count() const { return m_count; }

 private:
  std::size_t m_count = 0;
};

}  // namespace

Verdict readWithBoth(const std::string& logPath) {
  const std::size_t size = std::filesystem::file_size(logPath);
  const std::uint64_t tables = tablesOf(logPath);
  const TimeLimit limit(size, tables);
  const QuietOutput quiet;
  CountingReader base(logPath, kHighestLevel);
  profiling::VynProfileLogReaderJSON json(logPath, kHighestLevel);
  const bool isSound = base.readInputFile(false);
  check(json.readInputFile(false) == isSound, "both readers judge the log alike");
  if (isSound) {
    const auto& document = *(g_jsonDocument.End() - 1);
    check(document["messages"].Size() == base.count(), "both readers see the same messages");
    check(base.generateOutput("/dev/null"), "what the base reader read can be written");
    profiling::g_writeSingleObject = true;
    check(json.generateOutput("/dev/null"), "what the JSON reader read can be written");
  }
  check(isInProportion(g_jsonDocument.GetAllocator().Size(), size, tables),
        "the document's memory is in proportion to the log");
  g_jsonDocument.SetArray();
  g_jsonDocument.GetAllocator().Clear();
  return {isSound, base.count()};
}

}  // namespace vyn::fuzz
