#include "input/chunk_search.h"

#include <profile_log_generated.h>

#include <algorithm>
#include <vector>

#include "input/chunk_format.h"
#include "input/chunk_glance.h"
#include "input/chunk_verifier.h"

namespace vyn::profiling {
namespace {

// What may be read in vain: for each byte that was searched, and beside that.
constexpr std::uint64_t kTimesSearched = 8;
constexpr std::uint64_t kBudget = std::uint64_t{16} << 20;  // bytes

// Of the buffers whose end is looked for.
constexpr std::uint64_t kLongestBuffer = std::uint64_t{12} << 20;  // bytes
constexpr unsigned kMostBuffers = 64;

constexpr std::size_t kMostPadding = 7;  // bytes that builders put behind a buffer's last object

// How far a chunk may have been moved by bytes that were put in or removed.
constexpr std::uint64_t kNear = std::uint64_t{1} << 12;  // bytes

constexpr unsigned kMostHops = 16;  // from length to length

bool hasText(const flatbuffers::String* text) { return text != nullptr && text->size() > 0; }

// An empty table takes 12 bytes and is found in many places that no writer meant as a chunk.
bool saysSomething(std::span<const std::uint8_t> chunk) {
  const schema::ProfileLog& log = *schema::GetProfileLog(chunk.data());
  const schema::LogHeader* header = log.header();
  return (log.messages() != nullptr && log.messages()->size() > 0) ||
         (header != nullptr &&
          (hasText(header->netRunVersion()) || hasText(header->backendVersion())));
}

bool isSoundAndSaysSomething(std::span<const std::uint8_t> chunk) {
  return ChunkVerifier::isSoundByItself(chunk) && saysSomething(chunk);
}

// The bytes at the beginning of `buffer` that are a sound buffer by themselves. `buffer` is sound.
std::size_t leastSoundSize(std::span<const std::uint8_t> buffer) {
  std::size_t unsound = 0;
  std::size_t sound = buffer.size();
  while (sound - unsound > 1) {
    const std::size_t middle = unsound + (sound - unsound) / 2;
    (ChunkVerifier::isSoundByItself(buffer.first(middle)) ? sound : unsound) = middle;
  }
  return sound;
}

}  // namespace

ChunkSearch::ChunkSearch(SeekableSource& source, std::uint64_t size)
    : m_source(source), m_window(source, size) {}

std::optional<std::uint64_t> ChunkSearch::findBehind(const ChunkPlace& damaged) {
  if (const auto found = followLengths(damaged)) {
    return *found < m_window.size() ? found : std::nullopt;
  }
  const std::uint64_t buffer = damaged.offset + sizeof(ChunkLength);
  const Buffer state = lookAtBuffer(buffer);
  if (state.end) {
    return scan(*state.end, m_window.size(), Follower::kPlausible);
  }
  const std::uint64_t end = buffer + damaged.announced;
  if (state.isDamagedInside && end < m_window.size()) {
    if (const auto near = findNear(end, damaged.offset + 1)) {
      return near;
    }
  }
  return scan(damaged.offset + 1, m_window.size(), Follower::kPlausible);
}

// Where only the inside of chunks is damaged, their lengths still lead to the next sound one, or to
// the very end of the log. What they hold is not looked at: it may be a log that is a payload.
std::optional<std::uint64_t> ChunkSearch::followLengths(const ChunkPlace& damaged) {
  std::uint64_t offset = damaged.offset;
  std::optional<ChunkLength> length = damaged.announced;
  for (unsigned hop = 0; hop < kMostHops && length && isPlausibleChunkSize(*length); ++hop) {
    offset += sizeof(ChunkLength) + *length;
    if (offset == m_window.size() || isChunk(offset)) {
      return offset;
    }
    length = m_window.numberAt<ChunkLength>(offset);
  }
  return std::nullopt;
}

// Where bytes were put into a chunk or removed from it, the next one stands near the place to which
// its length leads; the nearest is taken.
std::optional<std::uint64_t> ChunkSearch::findNear(std::uint64_t end, std::uint64_t first) {
  std::vector<std::uint64_t> places;
  auto place = findLookalike(std::max(first, end - std::min(end, kNear)), end + kNear);
  while (place) {
    places.push_back(*place);
    place = findLookalike(*place + 1, end + kNear);
  }
  const auto distance = [end](std::uint64_t from) {
    return std::max(from, end) - std::min(from, end);
  };
  std::sort(places.begin(), places.end(), [&](std::uint64_t left, std::uint64_t right) {
    return distance(left) < distance(right);
  });
  const auto found = std::find_if(places.begin(), places.end(), [this](std::uint64_t from) {
    return isFollowed(from) && isChunk(from);
  });
  return found == places.end() ? std::nullopt : std::optional(*found);
}

bool ChunkSearch::mayHoldOthers(std::span<const std::uint8_t> chunk) {
  return ChunkVerifier::isSoundByItself(chunk.first(chunk.size() - kMostPadding - 1));
}

std::optional<std::uint64_t> ChunkSearch::findInside(std::span<const std::uint8_t> chunk,
                                                     const ChunkPlace& place) {
  const std::uint64_t begin = place.offset + sizeof(ChunkLength);
  return scan(begin + leastSoundSize(chunk), begin + chunk.size(), Follower::kAny);
}

std::optional<std::uint64_t> ChunkSearch::scan(std::uint64_t from, std::uint64_t to,
                                               Follower follower) {
  std::optional<std::uint64_t> place = findLookalike(from, to);
  while (place && !((follower == Follower::kAny || isFollowed(*place)) && isChunk(*place))) {
    place = findLookalike(*place + 1, to);
  }
  return place;
}

std::optional<std::uint64_t> ChunkSearch::findLookalike(std::uint64_t from, std::uint64_t to) {
  constexpr std::size_t kLookedAt = 2 * sizeof(ChunkLength);
  while (from < to) {
    const std::span<const std::uint8_t> ahead = m_window.ahead(from);
    if (ahead.size() < kLookedAt) {
      return std::nullopt;
    }
    const std::size_t count = std::min<std::uint64_t>(ahead.size() - kLookedAt + 1, to - from);
    for (std::size_t i = 0; i < count; ++i, ++m_searched) {
      // One number, which few other bytes pass, before all others.
      if (mayBeginWithRoot(ahead.data() + i + sizeof(ChunkLength)) && isWithinBudget() &&
          looksLikeChunk(m_window, from + i)) {
        return from + i;
      }
    }
    from += count;
  }
  return std::nullopt;
}

bool ChunkSearch::isWithinBudget() const {
  return m_readInVain + m_window.strayBytes() <= kBudget + kTimesSearched * m_searched;
}

bool ChunkSearch::isFollowed(std::uint64_t offset) {
  const ChunkLength length = m_window.numberAt<ChunkLength>(offset).value_or(0);
  return mayGoOnAt(m_window, offset + sizeof(ChunkLength) + length);
}

bool ChunkSearch::isChunk(std::uint64_t offset) {
  if (!isWithinBudget() || !looksLikeChunk(m_window, offset)) {
    return false;
  }
  const ChunkLength size = m_window.numberAt<ChunkLength>(offset).value_or(0);
  const auto bytes = bytesFrom(m_source, offset + sizeof(ChunkLength), size);
  if (bytes && isSoundAndSaysSomething(*bytes)) {
    return true;
  }
  m_readInVain += size;
  return false;
}

ChunkSearch::Buffer ChunkSearch::lookAtBuffer(std::uint64_t offset) {
  const std::uint64_t room = m_window.size() - std::min(offset, m_window.size());
  if (m_buffersLooked == kMostBuffers || !looksLikeRoot(m_window, offset, room)) {
    return {};
  }
  ++m_buffersLooked;
  const auto bytes = bytesFrom(m_source, offset, std::min(room, kLongestBuffer));
  if (!bytes || !isSoundAndSaysSomething(*bytes)) {
    return {std::nullopt, room <= kLongestBuffer};
  }
  return {offset + leastSoundSize(*bytes), false};
}

}  // namespace vyn::profiling
