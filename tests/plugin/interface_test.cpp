// What a host relies on: the exports, the slots of the virtual table, and a clean unload.

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <memory>
#include <sstream>

#include "support/json_log.h"
#include "support/loaded_plugin.h"
#include "support/log_event.h"
#include "support/run_program.h"
#include "support/temp_folder.h"
#include "support/text_file.h"

namespace vyn::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class Plugin : public testing::TestWithParam<const char*> {};

TEST_P(Plugin, ExportsTwoNamesAndNothingElse) {
  const ProgramResult symbols = runProgram(
      {.words = {"nm", "--dynamic", "--defined-only", "--format=just-symbols", GetParam()}});
  EXPECT_EQ(symbols.output, "createReader\ndeleteReader\n");
}

TEST_P(Plugin, IsGoneAfterItWasClosed) {
  {
    const LoadedPlugin plugin(GetParam());
    const TempFolder folder;
    const auto reader = plugin.reader(folder.add("run.log", logOf({"{messages:[]}"})));
    reader->readInputFile(false);
    EXPECT_THAT(readFile("/proc/self/maps"), HasSubstr("ProfilingReader.so"));
  }
  EXPECT_THAT(readFile("/proc/self/maps"), Not(HasSubstr("ProfilingReader.so")));
  EXPECT_EQ(dlopen(GetParam(), RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST_P(Plugin, DeletesNothingForANullPointer) {
  const LoadedPlugin plugin(GetParam());
  plugin.deleteReader()(nullptr);
}

TEST_P(Plugin, ReaderIsValidBeforeAndAfterReading) {
  const LoadedPlugin plugin(GetParam());
  const TempFolder folder;
  const auto reader = plugin.reader(folder.add("run.log", ""));
  EXPECT_EQ(reader->isReaderValid(), 1);
  EXPECT_TRUE(reader->readInputFile(false));
  EXPECT_EQ(reader->isReaderValid(), 1);
}

TEST_P(Plugin, HeaderDetailsAreEmptyBeforeReading) {
  const LoadedPlugin plugin(GetParam());
  EXPECT_EQ(plugin.reader("run.log")->getHeaderDetails(), "");
}

// Calls a slot of the virtual table with nothing but the binary interface's rules.
template <typename Result, typename... Arguments>
Result callSlot(profiling::ProfileLogReader* reader, std::size_t slot, Arguments... arguments) {
  using Operation = Result (*)(profiling::ProfileLogReader*, Arguments...);
  auto* const* const table = *reinterpret_cast<void* const* const*>(reader);
  return reinterpret_cast<Operation>(table[slot])(reader, arguments...);
}

class Slots : public testing::Test {
 protected:
  TempFolder m_folder;
  LoadedPlugin m_plugin{VYN_SUMMARY_PLUGIN};
  LoadedPlugin::Reader m_reader{
      m_plugin.reader(m_folder.add("run.log", logOf({"{header:{netRunVersion:\"2.0.0\"}}"})))};
};

TEST_F(Slots, ZeroGeneratesOutput) {
  const std::string path = m_folder.path("out.csv");
  EXPECT_TRUE((callSlot<bool, const std::string&>(m_reader.get(), 0, path)));
  EXPECT_NE(readFile(path), "");
}

TEST_F(Slots, TwoDeletes) {
  auto* reader = m_reader.release();
  callSlot<void>(reader, 2);  // the address sanitizer's leak check sees that it did
}

TEST_F(Slots, ThreeReturnsHeaderDetails) {
  m_reader->readInputFile(false);
  // A result in memory: its address is the first argument, before the object's.
  using Operation = void (*)(std::string*, profiling::ProfileLogReader*);
  auto* const* const table = *reinterpret_cast<void* const* const*>(m_reader.get());
  alignas(std::string) unsigned char memory[sizeof(std::string)];
  auto* details = reinterpret_cast<std::string*>(memory);
  reinterpret_cast<Operation>(table[3])(details, m_reader.get());
  EXPECT_THAT(*details, HasSubstr("vyn-net-run        2.0.0\n"));
  std::destroy_at(details);
}

TEST_F(Slots, FourProcessesTheNextMessage) { EXPECT_FALSE(callSlot<bool>(m_reader.get(), 4)); }

TEST_F(Slots, FiveReads) {
  EXPECT_TRUE((callSlot<bool, bool>(m_reader.get(), 5, false)));
  EXPECT_NE(m_reader->getHeaderDetails(), "");
}

TEST_F(Slots, SixIsOne) { EXPECT_EQ(callSlot<int>(m_reader.get(), 6), 1); }

std::vector<profiling::EventNode> oneEvent() { return {cycles("conv", 7)}; }

TEST_F(Slots, SevenPrintsEvents) {
  std::ostringstream stream;
  auto events = oneEvent();  // passed by value: in the binary interface, by the address of a copy
  callSlot<void, std::ostream&, std::vector<profiling::EventNode>*>(m_reader.get(), 7, stream,
                                                                    &events);
  EXPECT_EQ(stream.str(), "    Backend (conv): 7 cycles\n");
}

TEST_F(Slots, EightWritesEventsAsCsv) {
  std::ostringstream stream;
  auto events = oneEvent();
  const std::string message = "EXECUTE";
  callSlot<void, std::ostream&, std::vector<profiling::EventNode>*, std::uint64_t,
           const std::string&>(m_reader.get(), 8, stream, &events, 42, message);
  EXPECT_EQ(stream.str(), "42,EXECUTE,7,CYCLES,BACKEND,ROOT,conv\n");
}

INSTANTIATE_TEST_SUITE_P(Both, Plugin, testing::Values(VYN_JSON_PLUGIN, VYN_SUMMARY_PLUGIN),
                         [](const auto& plugin) { return plugin.index == 0 ? "Json" : "Summary"; });

}  // namespace
}  // namespace vyn::test
