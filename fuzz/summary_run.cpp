#include "summary_run.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "check.h"
#include "hashed_output.h"
#include "scratch_folder.h"
#include "table_total.h"
#include "time_limit.h"

namespace vyn::fuzz {
namespace {

// No name of a payload leads out of the current folder without this byte.
bool hasSlash(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::istreambuf_iterator<char> end;
  return std::find(std::istreambuf_iterator<char>(file), end, '/') != end;
}

}  // namespace

SummaryRun::SummaryRun(const std::string& logPath)
    : m_reader(logPath, profiling::VisibilityLevel{127}) {
  const TimeLimit limit(std::filesystem::file_size(logPath), tablesOf(logPath));
  const ScratchFolder folder;
  Hash console;
  const HashedConsole redirection(console);
  m_outputs.isSound = m_reader.readInputFile(!hasSlash(logPath));
  if (m_outputs.isSound) {
    HashedFile listing;
    check(m_reader.generateOutput(listing.path()), "what the summary reader read can be written");
    m_outputs.listing = listing.finish();
  }
  m_outputs.console = console.value();
  m_outputs.payloads = folder.hashOfFiles();
}

bool SummaryRun::CountingReader::processNextMessage() {
  const bool taken = VynProfileLogReader::processNextMessage();
  m_count += m_reachedEof ? 0 : 1;
  return taken;
}

}  // namespace vyn::fuzz
