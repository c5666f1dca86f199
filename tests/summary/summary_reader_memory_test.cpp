// The n-th allocation fails, for every n until reading succeeds.

#include <gmock/gmock.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

#include "input/group_index.h"
#include "log/logger_registry.h"
#include "report/event_text.h"
#include "support/captured_output.h"
#include "support/log_message.h"
#include "support/open_reader.h"
#include "support/replaced_new.h"

namespace vyn::test {
namespace {

long g_allocationsLeft = -1;  // below 0: as many as there is memory for
bool g_failed = false;
long g_held = 0;  // blocks that are not freed yet

}  // namespace

void* allocateBlock(std::size_t size) {
  if (g_allocationsLeft == 0) {
    g_allocationsLeft = -1;  // one failure; what deals with it has memory again
    g_failed = true;
    throw std::bad_alloc();
  }
  if (g_allocationsLeft > 0) {
    --g_allocationsLeft;
  }
  void* block = std::malloc(size);
  ++g_held;
  return block != nullptr ? block : throw std::bad_alloc();
}

void* allocateBlockOrNull(std::size_t size) noexcept {
  ++g_held;
  return std::malloc(size);
}

void releaseBlock(void* block) noexcept {
  g_held -= block != nullptr ? 1 : 0;
  std::free(block);
}

namespace {

enum class Outcome { kRead, kRefused, kThrown };

std::string textOf(const std::vector<profiling::EventNode>& events) {
  std::string text = "[";
  for (const auto& node : events) {
    text += node.identifier + "=" + formatEventValue(node.dataType, node.value) +
            textOf(node.children) + " ";
  }
  return text + "]";
}

template <typename Entry>
std::string textOf(const Entry& entry) {
  return std::to_string(entry.duration) + "@" + std::to_string(entry.timestamp) +
         textOf(entry.events);
}

std::string textOf(const std::vector<profiling::ExecutionGroup>& groups) {
  std::string text;
  for (const auto& group : groups) {
    text += group.name + ":";
    for (const auto& record : group.records) {
      text += textOf(record) + ",";
    }
  }
  return text + "\n";
}

std::string textOf(const std::vector<profiling::EventGroup>& groups) {
  std::string text;
  for (const auto& group : groups) {
    text += group.name + ":" + textOf(group);
  }
  return text + "\n";
}

// All that messages leave in a reader, but for the asynchronous flag.
std::string storesOf(const OpenReader& reader) {
  struct Single {
    std::uint64_t duration;
    std::uint64_t timestamp;
    const std::vector<profiling::EventNode>& events;
  };
  std::string text = textOf(reader.m_initEvents);
  for (const Single& single :
       {Single{reader.m_createFromBinaryTime, reader.m_createFromBinaryTimestamp,
               reader.m_createFromBinaryEvents},
        Single{reader.m_deInitTime, reader.m_deInitTimestamp, reader.m_deInitEvents},
        Single{reader.m_executeIpsTime, reader.m_executeIpsTimestamp, reader.m_executeIpsEvents},
        Single{reader.m_libLoadTime, reader.m_libLoadTimestamp, reader.m_libLoadEvents}}) {
    text += textOf(single);
  }
  for (const bool flag :
       {reader.m_hasInitEvents, reader.m_hasCreateFromBinaryEvents, reader.m_hasExecuteIps,
        reader.m_hasLibLoad, reader.m_hasFinalize, reader.m_hasFinalizeEvents}) {
    text += flag ? '+' : '-';
  }
  return text + textOf(reader.m_executeGroups) + textOf(reader.m_applyBinarySectionGroups) +
         textOf(reader.m_finalizeGroups) + std::to_string(reader.m_eventStrings.size());
}

// Every operation that takes a message files it whole or not at all: what a failed read leaves can
// be shown.
class WatchedReader : public OpenReader {
 public:
  using OpenReader::OpenReader;

  bool processNextMessage() override {
    const long allocations = std::exchange(g_allocationsLeft, -1);
    const std::string before = storesOf(*this);
    g_allocationsLeft = allocations;
    try {
      return OpenReader::processNextMessage();
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(storesOf(*this), before);
      throw;
    }
  }
};

Outcome readWithAllocations(const std::string& path, long allocations) {
  WatchedReader reader(path);
  g_failed = false;
  g_allocationsLeft = allocations;
  try {
    const bool read = reader.readInputFile(false);
    g_allocationsLeft = -1;
    return read ? Outcome::kRead : Outcome::kRefused;
  } catch (const std::bad_alloc&) {
    if (!reader.m_headerSaved) {
      EXPECT_EQ(reader.m_netRunVersion + reader.m_backendVersion, "");
    }
    EXPECT_TRUE(reader.generateOutput(""));
    return Outcome::kThrown;
  }
}

// Messages of all kinds that have events, each kind twice: the second one replaces or joins what
// the first one left.
std::string logOfAllKinds() {
  const Event note{.value = "a text that needs memory of its own"};
  const Events events = {
      note, number("an identifier that is long", 1, {number("and so is this sub-event's", 2)}),
      initEvent("init of a graph", 1)};
  const Events componentEvents = {note, initEvent("init of a component", 1),
                                  finalizeEvent("finalize of a component", 1)};
  const std::string graph = "a graph with a long name";
  std::vector<Message> messages;
  for (const std::uint64_t round : {1U, 2U}) {
    const Step step = {.duration = 5 * round, .timestamp = round};
    messages.insert(messages.end(),
                    {execute(graph, step, events), executeAsync(graph, step, events),
                     finalize(graph, step, events), applyBinarySection(graph, step, events),
                     createFromBinary(step, events), deInit(step, events), executeIps(step, events),
                     loadLibrary(step, events),
                     graphComponent("a component's graph",
                                    {.duration = 7, .timestamp = round, .visibilityLevel = 1},
                                    componentEvents)});
  }
  return logOf({chunkOf(messages,
                        "{netRunVersion:\"a version text of some length\","
                        "backendVersion:\"another version text of some length\"}")});
}

TEST(AllocationFailure, IsNeverTakenForSuccess) {
  const TempFolder folder;
  const std::string path = folder.add("run.log", logOfAllKinds());
  ASSERT_TRUE(log::initializeLogging(nullptr, log::kError));
  int refused = 0;
  int thrown = 0;
  Outcome outcome = Outcome::kThrown;
  for (long allocations = 0; outcome != Outcome::kRead; ++allocations) {
    const std::string printed =
        printedBy([&] { outcome = readWithAllocations(path, allocations); });
    if (outcome == Outcome::kRefused) {
      EXPECT_EQ(printed, "<ms> [ ERROR ] Unable to allocate memory: std::bad_alloc\n");
      ++refused;
    } else if (outcome == Outcome::kThrown) {
      ++thrown;
    }
    EXPECT_EQ(g_failed, outcome != Outcome::kRead) << allocations;
  }
  log::terminateLogging();
  EXPECT_GE(refused, 2);  // the chunk's buffer and its owner
  EXPECT_GT(thrown, 20);  // memory that runs out while decoding is the host's to deal with
}

TEST(AllocationFailure, NeverShortensASummary) {
  const TempFolder folder;
  OpenReader reader(folder.add("run.log", logOfAllKinds()));
  ASSERT_TRUE(reader.readInputFile(false));
  const std::string whole = printedBy([&] { EXPECT_TRUE(reader.generateOutput("")); });
  bool isWritten = false;
  for (long allocations = 0; !isWritten; ++allocations) {
    g_failed = false;
    const std::string printed = printedBy([&] {
      const long held = g_held;
      g_allocationsLeft = allocations;
      try {
        isWritten = reader.generateOutput("");
      } catch (const std::bad_alloc&) {
        isWritten = false;
      }
      g_allocationsLeft = -1;
      EXPECT_EQ(g_held, held) << allocations;
    });
    EXPECT_EQ(isWritten, !g_failed) << allocations;
    EXPECT_EQ(printed, isWritten ? whole : "") << allocations;
  }
}

// First of all: a run is asynchronous also when there is no memory for its first execution.
TEST(AllocationFailure, DoesNotHideThatARunIsAsynchronous) {
  const TempFolder folder;
  const std::string path =
      folder.add("run.log", logWith({executeAsync("a graph with a long name", {.duration = 1})}));
  bool isRead = false;
  int marked = 0;
  for (long allocations = 0; !isRead; ++allocations) {
    OpenReader reader(path);
    g_allocationsLeft = allocations;
    try {
      isRead = reader.readInputFile(false);
      g_allocationsLeft = -1;
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(reader.m_asyncExecute || !reader.m_headerSaved) << allocations;
      marked += reader.m_asyncExecute && reader.m_executeGroups.empty() ? 1 : 0;
    }
  }
  EXPECT_GE(marked, 1);
}

TEST(AllocationFailure, LeavesNoNameWithoutItsGraph) {
  const std::string chunk(2'000, 'n');
  for (const std::size_t length : {100U, 1'000U}) {
    bool isAdded = false;
    for (long allocations = 0; !isAdded; ++allocations) {
      profiling::TextFingerprints fingerprints;
      fingerprints.startChunk({reinterpret_cast<const std::uint8_t*>(chunk.data()), chunk.size()});
      profiling::GroupIndex index;
      std::vector<profiling::ExecutionGroup> groups;
      const auto name = std::string_view(chunk).substr(0, length);
      g_allocationsLeft = allocations;
      try {
        index.add(groups, name, fingerprints, {});
        isAdded = true;
      } catch (const std::bad_alloc&) {
        EXPECT_THAT(graphsOf(groups), testing::IsEmpty());
        index.add(groups, name, fingerprints, {});
      }
      g_allocationsLeft = -1;
      ASSERT_THAT(graphsOf(groups), testing::ElementsAre(name));
      EXPECT_THAT(groups[0].records, testing::SizeIs(1));
    }
  }
}

TEST(AllocationFailure, LeavesNoHalfMadeReader) {
  const std::string path(100, 'p');
  g_allocationsLeft = 1;  // for the object; its copy of the path finds none
  EXPECT_THROW(std::make_unique<OpenReader>(path), std::bad_alloc);
  g_allocationsLeft = -1;
}

}  // namespace
}  // namespace vyn::test
