// In which order the process-wide objects come and go, and what they hold at first.

#include <cxxabi.h>
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "json/json_document.h"
#include "log/logger_registry.h"
#include "support/loaded_plugin.h"
#include "support/run_program.h"

namespace {

using Destructor = void (*)(void*);

/// An object whose construction has ended and that is destroyed with its program or library.
struct StaticObject {
  Destructor destructor;
  void* address;
  void* library;  // its handle for such objects
};

constexpr std::size_t kMaxObjects = 4096;

// Filled before any other object of this file is made.
std::array<StaticObject, kMaxObjects> g_objects;      // in order of construction
std::array<const StaticObject*, kMaxObjects> g_gone;  // in order of destruction
std::size_t g_objectCount = 0;
std::size_t g_goneCount = 0;

void destroy(void* entry) {
  const auto* object = static_cast<const StaticObject*>(entry);
  g_gone[g_goneCount++] = object;
  object->destructor(object->address);
}

// Constant from the start, so that it is what the process began with.
const std::uint64_t g_firstHandle = vyn::log::g_currentLogger;

}  // namespace

// Stands before the C library's, also for the plug-in: compilers call it for each static object
// that was constructed. NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" [[gnu::visibility("default")]] int __cxa_atexit(Destructor destructor, void* address,
                                                           void* library) noexcept {
  static const auto original =
      reinterpret_cast<int (*)(Destructor, void*, void*)>(dlsym(RTLD_NEXT, "__cxa_atexit"));
  if (g_objectCount == kMaxObjects) {
    return original(destructor, address, library);
  }
  StaticObject& object = g_objects[g_objectCount++];
  object = {destructor, address, library};
  return original(destroy, &object, library);
}

namespace vyn::test {
namespace {

const StaticObject* objectAt(const void* address) {
  const auto* end = g_objects.data() + g_objectCount;
  const auto* found =
      std::find_if(static_cast<const StaticObject*>(g_objects.data()), end,
                   [&](const StaticObject& object) { return object.address == address; });
  return found != end ? found : nullptr;
}

bool initialisesStreams(const StaticObject& object) {
  static void* const destructor = dlsym(RTLD_DEFAULT, "_ZNSt8ios_base4InitD1Ev");
  return destructor != nullptr && reinterpret_cast<void*>(object.destructor) == destructor;
}

// Streams, document, streams twice, registry, without anything between them.
void expectOrder(const void* document, const void* registry) {
  const StaticObject* place = objectAt(document);
  ASSERT_NE(place, nullptr);
  ASSERT_GT(place, g_objects.data());
  ASSERT_LT(place + 3, g_objects.data() + g_objectCount);
  EXPECT_TRUE(initialisesStreams(place[-1]));
  EXPECT_TRUE(initialisesStreams(place[1]));
  EXPECT_TRUE(initialisesStreams(place[2]));
  EXPECT_EQ(place[3].address, registry);
  EXPECT_EQ(place[-1].library, place[3].library);
}

// Where the plug-in has an object, by its name in the symbol table.
const void* objectOfPlugin(const std::string& name) {
  void* const plugin = dlopen(VYN_JSON_PLUGIN, RTLD_NOW | RTLD_NOLOAD);
  Dl_info place{};
  if (plugin == nullptr || dladdr(dlsym(plugin, "createReader"), &place) == 0) {
    throw std::runtime_error("the plug-in is not loaded");
  }
  dlclose(plugin);
  std::istringstream lines(
      test::runProgram({.words = {"nm", "--demangle", VYN_JSON_PLUGIN}}).output);
  for (std::string line; std::getline(lines, line);) {
    if (line.ends_with(" " + name)) {
      return static_cast<const char*>(place.dli_fbase) + std::stoull(line, nullptr, 16);
    }
  }
  throw std::runtime_error("no symbol " + name);
}

TEST(ProcessState, DocumentIsMadeBetweenTheStreamsAndTheRegistryAfterIt) {
  expectOrder(&profiling::g_jsonDocument, &log::g_loggerRegistry);
}

TEST(ProcessState, BeginsWithoutALoggerAndWithAnEmptyDocument) {
  EXPECT_EQ(g_firstHandle, 0U);
  EXPECT_TRUE(log::g_loggerRegistry.loggers.empty());
  EXPECT_TRUE(profiling::g_jsonDocument.IsArray());
  EXPECT_TRUE(profiling::g_jsonDocument.Empty());
  EXPECT_TRUE(profiling::g_writeSingleObject);
}

TEST(ProcessState, PluginMakesItWhenItIsLoadedAndDestroysItInReverse) {
  std::vector<const StaticObject*> made;
  {
    const std::size_t before = g_objectCount;
    const LoadedPlugin plugin(VYN_JSON_PLUGIN);
    const void* document = objectOfPlugin("vyn::profiling::g_jsonDocument");
    const void* registry = objectOfPlugin("vyn::log::g_loggerRegistry");
    expectOrder(document, registry);
    ASSERT_NE(objectAt(registry), nullptr);
    const void* library = objectAt(registry)->library;
    for (std::size_t i = before; i < g_objectCount; ++i) {
      if (g_objects[i].library == library) {
        made.push_back(&g_objects[i]);
      }
    }
    plugin.reader("run.log");
    g_goneCount = 0;
  }
  ASSERT_GE(g_goneCount, made.size());
  std::vector<const StaticObject*> gone(g_gone.begin(),
                                        g_gone.begin() + static_cast<std::ptrdiff_t>(g_goneCount));
  std::reverse(gone.begin(), gone.end());
  gone.resize(made.size());  // without what was made later, at its first use
  EXPECT_EQ(gone, made);
}

}  // namespace
}  // namespace vyn::test
