// Four times the log costs about four times the processor's time, whatever the log repeats.

#include <gtest/gtest.h>
#include <profile_log_generated.h>

#include <algorithm>
#include <ctime>
#include <limits>
#include <string>
#include <vector>

#include "support/json_log.h"
#include "support/loaded_plugin.h"
#include "support/temp_folder.h"

namespace vyn::test {
namespace {

namespace schema = profiling::schema;

using flatbuffers::FlatBufferBuilder;
using flatbuffers::Offset;

std::string chunkWithEvents(FlatBufferBuilder& builder,
                            const std::vector<Offset<schema::Event>>& events) {
  const auto message =
      schema::CreateMessage(builder, schema::CreateMessageHeader(builder), schema::MethodType::NONE,
                            schema::CreateAppMetrics(builder), 0, builder.CreateVector(events));
  builder.Finish(schema::CreateProfileLog(builder, 0, builder.CreateVector(std::vector{message})));
  return {reinterpret_cast<const char*>(builder.GetBufferPointer()), builder.GetSize()};
}

// Many long texts in the first chunk, and behind it as many chunks that hold nothing.
std::string longTextsBeforeEmptyChunks(std::size_t scale) {
  constexpr std::size_t kCount = 8000;
  FlatBufferBuilder builder;
  std::vector<Offset<schema::Event>> events;
  for (std::size_t i = 0; i < kCount * scale; ++i) {
    events.push_back(schema::CreateEvent(builder, builder.CreateString(std::string(300, 'x'))));
  }
  std::string log = framed(chunkWithEvents(builder, events));
  const std::string empty = framed(chunkBytes("{}"));
  for (std::size_t i = 0; i < 4 * kCount * scale; ++i) {
    log += empty;
  }
  return log;
}

// One text that is as long as the list of the events that it names.
std::string longTextOfAllEvents(std::size_t scale) {
  const std::size_t count = 200'000 * scale;
  FlatBufferBuilder builder;
  const auto name = builder.CreateString(std::string(4 * count, 'x'));
  const auto event = schema::CreateEvent(builder, name);
  return framed(chunkWithEvents(builder, std::vector(count, event)));
}

double readSeconds(const std::string& log) {
  const TempFolder folder;
  const std::string path = folder.add("run.log", log);
  double best = std::numeric_limits<double>::max();
  for (int attempt = 0; attempt < 3; ++attempt) {
    const LoadedPlugin plugin(VYN_JSON_PLUGIN);
    const auto reader = plugin.reader(path);
    const std::clock_t start = std::clock();
    EXPECT_TRUE(reader->readInputFile(false));
    best = std::min(best, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
  }
  return best;
}

void expectLinear(std::string (*logOfScale)(std::size_t)) {
  // A quadratic step makes 16 of it; a busy machine not even 8.
  EXPECT_LT(readSeconds(logOfScale(4)), 8 * readSeconds(logOfScale(1)) + 0.05);
}

TEST(JsonGrowth, IsLinearInLongTextsBeforeEmptyChunks) { expectLinear(longTextsBeforeEmptyChunks); }

TEST(JsonGrowth, IsLinearInALongTextOfAllEvents) { expectLinear(longTextOfAllEvents); }

}  // namespace
}  // namespace vyn::test
