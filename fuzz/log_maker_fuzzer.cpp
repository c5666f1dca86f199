// Input: what the log maker is asked for. Whatever it is, both readers take the log that comes out
// and see every message that went in.

#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

#include "both_readers.h"
#include "check.h"
#include "logmaker/chunk_writer.h"
#include "logmaker/output_file.h"
#include "logmaker/scenario.h"

namespace {

using vyn::fuzz::check;

/// Takes the options from the input, byte by byte; what is missing is 0.
class Request {
 public:
  Request(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

  /// A number of up to `limit`.
  std::size_t number(std::size_t limit) {
    std::uint32_t value = 0;
    const std::size_t count = std::min(m_size, sizeof(value));
    std::memcpy(&value, m_data, count);
    m_data += count;
    m_size -= count;
    return value % (limit + 1);
  }

 private:
  const std::uint8_t* m_data;
  std::size_t m_size;
};

vyn::logmaker::ScenarioOptions scenarioOptions(Request& request) {
  vyn::logmaker::ScenarioOptions options;
  options.seed = request.number(UINT32_MAX);
  options.graphs = 1 + request.number(4);
  options.nodes = request.number(20);
  options.executions = request.number(8);
  options.objectPayloads = request.number(3);
  options.binarySections = request.number(3);
  options.isAsync = request.number(1) != 0;
  options.hasComponents = request.number(1) != 0;
  return options;
}

/// Writes the log and returns how many messages it holds.
std::size_t makeLog(const std::string& path, Request request) {
  vyn::logmaker::Scenario scenario(scenarioOptions(request));
  vyn::logmaker::OutputFile file(path);
  vyn::logmaker::ChunkWriter log(file, scenario.header(), 1 + request.number(10000));
  std::size_t messageCount = 0;
  scenario.play(
      [&](const vyn::logmaker::Message& message) {
        log.write(message);
        ++messageCount;
      },
      [] { return false; });
  log.finish();
  file.close();
  file.publish();
  return messageCount;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::string path =
      (std::filesystem::temp_directory_path() / ("made." + std::to_string(getpid()) + ".log"))
          .string();
  const std::size_t messageCount = makeLog(path, Request(data, size));
  const vyn::fuzz::Verdict verdict = vyn::fuzz::readWithBoth(path);
  std::remove(path.c_str());
  check(verdict.isSound, "a log that was made can be read");
  check(verdict.messageCount == messageCount, "readers see every message that was written");
  return 0;
}
