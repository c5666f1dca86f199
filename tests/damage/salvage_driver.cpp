// Damages a log at random, searches it for sound chunks and holds what is found against what was
// there: salvage_driver KIND LOG CASES MOST_MISSED MOST_STRANGE
//
// KIND is "plain", or "inside" for a log whose chunks hold LOG as a payload. A chunk that is saved
// should be one of the log's, at its place, or one whose damage no verifier can see; at most
// MOST_STRANGE may be none. Of the log's chunks that are still whole, at most MOST_MISSED in a
// thousand may be missed.

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "input/salvage.h"
#include "random_damage.h"

namespace {

using namespace vyn::profiling;
using vyn::test::DamagedLog;

// Places of chunks, each with its size; both with the length in front.
using Chunks = std::map<std::int64_t, std::int64_t>;

class Recorder : public MessageSink {
 public:
  void chunk(const Chunk& /*chunk*/, const ChunkPlace& place) override {
    if (place.present == place.announced) {
      m_chunks[static_cast<std::int64_t>(place.offset)] =
          static_cast<std::int64_t>(sizeof(ChunkLength) + place.announced);
    }
  }
  void message(const schema::Message& /*message*/) override {}

  const Chunks& chunks() const { return m_chunks; }

 private:
  Chunks m_chunks;
};

Chunks salvaged(const std::string& log) {
  MemorySource source({reinterpret_cast<const std::uint8_t*>(log.data()), log.size()});
  Recorder recorder;
  if (salvageLog(source, recorder, [](const LostRange&) {}, {true, true}) != WalkEnd::kEndOfLog) {
    std::abort();
  }
  return recorder.chunks();
}

struct Counts {
  std::uint64_t wholeChunks = 0;    // that the damage left
  std::uint64_t missed = 0;         // of them
  std::uint64_t damagedChunks = 0;  // that were saved all the same
  std::uint64_t strangers = 0;      // saved, and no chunks of the log
};

class Trial {
 public:
  explicit Trial(const std::string& log) : m_log(log), m_chunks(salvaged(log)) {
    for (const auto& [place, size] : m_chunks) {
      m_lengths.push_back(place);
    }
  }

  void run(unsigned seed) {
    std::mt19937 random(seed);
    DamagedLog damaged(m_log);
    const std::string what = damageAtRandom(damaged, m_lengths, random);
    const Chunks found = salvaged(damaged.bytes);
    for (const auto& [place, size] : found) {
      judge(damaged, place, size, "case " + std::to_string(seed) + ": " + what);
    }
    for (std::size_t place = 0; place < damaged.origins.size(); ++place) {
      countWhole(damaged, found, static_cast<std::int64_t>(place));
    }
  }

  const Counts& counts() const { return m_counts; }

 private:
  // A chunk of the log, though something in it is damaged: its buffer begins where one did, or its
  // length stands where one stood.
  bool beginsLikeOne(const DamagedLog& damaged, std::int64_t place) const {
    for (std::int64_t i = 0; i < 20; ++i) {
      const std::int64_t origin = damaged.origins[static_cast<std::size_t>(place + i)];
      if (origin >= i && m_chunks.count(origin - i) != 0) {
        return true;
      }
    }
    return false;
  }

  void judge(const DamagedLog& damaged, std::int64_t place, std::int64_t size,
             const std::string& what) {
    const auto original = m_chunks.find(damaged.origins[static_cast<std::size_t>(place)]);
    if (original != m_chunks.end() && original->second == size &&
        damaged.holds(place, original->first, size)) {
      return;
    }
    if (beginsLikeOne(damaged, place)) {
      ++m_counts.damagedChunks;
      return;
    }
    ++m_counts.strangers;
    std::cerr << what << ": " << size << " bytes at " << place << " are no chunk of the log\n";
  }

  void countWhole(const DamagedLog& damaged, const Chunks& found, std::int64_t place) {
    const auto original = m_chunks.find(damaged.origins[static_cast<std::size_t>(place)]);
    if (original != m_chunks.end() && damaged.holds(place, original->first, original->second)) {
      ++m_counts.wholeChunks;
      m_counts.missed += found.count(place) == 0 ? 1 : 0;
    }
  }

  const std::string& m_log;
  Chunks m_chunks;
  std::vector<std::int64_t> m_lengths;
  Counts m_counts;
};

// A chunk with one event, whose payload is the log.
std::string chunkAround(const std::string& log) {
  flatbuffers::FlatBufferBuilder builder;
  const auto text = builder.CreateString("a text behind the payload");
  const auto payload =
      builder.CreateVector(reinterpret_cast<const std::uint8_t*>(log.data()), log.size());
  schema::EventBuilder event(builder);
  event.add_identifier(text);
  event.add_rawData(payload);
  const auto events = builder.CreateVector(std::vector{event.Finish()});
  const auto header = schema::CreateMessageHeader(builder);
  const auto metrics = schema::CreateAppMetrics(builder);
  const auto message =
      schema::CreateMessage(builder, header, schema::MethodType::NONE, metrics, 0, events);
  const auto messages = builder.CreateVector(std::vector{message});
  builder.Finish(schema::CreateProfileLog(builder, 0, messages));
  const auto length = lengthBytes(builder.GetSize());
  return std::string(length.begin(), length.end()) +
         std::string(reinterpret_cast<const char*>(builder.GetBufferPointer()), builder.GetSize());
}

std::string logAround(const std::string& log) {
  constexpr int kChunks = 10;
  std::string outer;
  for (int i = 0; i < kChunks; ++i) {
    outer += chunkAround(log);
  }
  return outer;
}

std::string readFile(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 6) {
    return 2;
  }
  const std::string read = readFile(arguments[2]);
  const std::string log = std::string(arguments[1]) == "inside" ? logAround(read) : read;
  const auto cases = static_cast<unsigned>(std::stoul(arguments[3]));
  Trial trial(log);
  for (unsigned seed = 0; seed < cases; ++seed) {
    trial.run(seed);
  }
  const Counts& counts = trial.counts();
  std::cout << cases << " damaged logs: " << counts.missed << " of " << counts.wholeChunks
            << " whole chunks missed, " << counts.damagedChunks << " damaged ones taken, "
            << counts.strangers << " that are none\n";
  return counts.wholeChunks > 0 && counts.strangers <= std::stoul(arguments[5]) &&
                 counts.missed * 1000 <= counts.wholeChunks * std::stoul(arguments[4])
             ? 0
             : 1;
}
