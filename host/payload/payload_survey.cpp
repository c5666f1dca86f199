#include "host/payload/payload_survey.h"

#include <profile_log_generated.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <functional>
#include <map>
#include <new>
#include <stdexcept>
#include <string_view>

#include "base/saturating.h"
#include "files/file_error.h"
#include "input/log_walk.h"

namespace vyn::host {
namespace {

namespace schema = profiling::schema;

using EventVector = flatbuffers::Vector<flatbuffers::Offset<schema::Event>>;

constexpr std::uint64_t kLeastOnDisk = 4096;  // bytes; a block, for even an empty file takes room

constexpr std::size_t kShown = 200;  // bytes of a text in a message

// The listings of the average, the fastest and the slowest execution each write the payload again.
constexpr std::uint64_t kListings = 3;

// How often a message's payloads are written.
struct Repetition {
  bool isForListings = false;   // once for each of the listings
  bool isForSubEvents = false;  // and those of outermost events once more for each sub-event
};

Repetition repetitionOf(const schema::Message& message) {
  switch (message.method()) {
    case schema::MethodType::BACKEND_EXECUTE:
    case schema::MethodType::BACKEND_EXECUTE_ASYNC:
    case schema::MethodType::BACKEND_GRAPH_COMPONENT:
      return {.isForListings = true, .isForSubEvents = true};
    case schema::MethodType::APPLY_BINARY_SECTION:
      return {.isForListings = true, .isForSubEvents = false};
    default:
      return {};
  }
}

std::uint64_t writesOf(const schema::Event& event, const Repetition& repetition) {
  const bool repeats = repetition.isForSubEvents && event.subEvents() != nullptr;
  return (repetition.isForListings ? kListings : 1) + (repeats ? event.subEvents()->size() : 0);
}

// Up to its first zero byte. Looked at no further than a path can be long: such a name is refused,
// and texts of a hostile log may overlap.
std::string_view fileName(const flatbuffers::String& text) {
  const std::size_t length = std::min<std::size_t>(text.size(), PATH_MAX);
  return {text.c_str(), strnlen(text.c_str(), length)};
}

std::uint64_t payloadSize(const schema::Event& event) {
  const auto* bytes = event.rawData();
  return event.valueType() == schema::EventValueType::RAW_DATA && bytes != nullptr ? bytes->size()
                                                                                   : 0;
}

class Surveyor : public profiling::MessageSink {
 public:
  void chunk(const profiling::Chunk& /*chunk*/, const profiling::ChunkPlace& /*place*/) override {
    m_placesByText.clear();
  }
  void message(const schema::Message& message) override {
    add(message.profilingEvents(), repetitionOf(message));
  }

  PayloadSurvey take() { return std::move(m_survey); }

 private:
  // The verifier bounds how deep events nest and how many a chunk names.
  void add(const EventVector* events, const Repetition& repetition) {
    if (events == nullptr) {
      return;
    }
    for (const schema::Event* event : *events) {
      if (event->unit() == schema::EventUnit::OBJECT && event->secondaryName() != nullptr) {
        add(*event, repetition);
      }
      add(event->subEvents(), {.isForListings = repetition.isForListings, .isForSubEvents = false});
    }
  }

  void add(const schema::Event& event, const Repetition& repetition) {
    const std::size_t place = placeOf(event);
    if (place == kNone) {
      return;
    }
    const std::uint64_t writes = writesOf(event, repetition);
    PayloadName& payload = m_survey.names[place];
    payload.sizes.insert(payloadSize(event));
    payload.writes = profiling::saturatingSum(payload.writes, writes);
    const std::uint64_t bytes =
        std::max(kLeastOnDisk, profiling::saturatingSum(payloadSize(event), payload.name.size()));
    m_survey.bytes =
        profiling::saturatingSum(m_survey.bytes, profiling::saturatingProduct(writes, bytes));
  }

  // Texts are told apart by their place first, so that one that many events share is read once.
  std::size_t placeOf(const schema::Event& event) {
    const auto [known, isNew] = m_placesByText.try_emplace(event.secondaryName(), kNone);
    if (isNew) {
      known->second = placeOfName(fileName(*event.secondaryName()), event);
    }
    return known->second;
  }

  std::size_t placeOfName(std::string_view name, const schema::Event& event) {
    if (name.empty()) {
      return kNone;
    }
    const auto [known, isNew] =
        m_placesByName.try_emplace(std::string(name), m_survey.names.size());
    if (isNew) {
      const auto* identifier = event.identifier();
      m_survey.names.push_back(
          {known->first,
           identifier != nullptr ? shortened(identifier->string_view()) : "null",
           {},
           0});
    }
    return known->second;
  }

  static constexpr std::size_t kNone = SIZE_MAX;

  PayloadSurvey m_survey;
  std::map<const flatbuffers::String*, std::size_t> m_placesByText;  // of one chunk
  std::map<std::string, std::size_t, std::less<>> m_placesByName;
};

}  // namespace

PayloadSurvey surveyPayloads(const LogFile& log) {
  try {
    Surveyor surveyor;
    profiling::FileSource file(log.path);
    // Readers refuse a log that is damaged further on.
    [[maybe_unused]] const profiling::WalkResult walk = profiling::walkLog(file, surveyor);
    return surveyor.take();
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  }
  throw files::FileError(log.name, kNotEnoughMemory);
}

std::string shortened(std::string_view text) {
  return std::string(text.substr(0, kShown)) + (text.size() > kShown ? "..." : "");
}

}  // namespace vyn::host
