#include "base/text_hash.h"

#include <sys/auxv.h>

#include <cstring>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace vyn::profiling {

std::size_t TextHash::operator()(std::string_view text) const {
  return XXH3_64bits_withSeed(text.data(), text.size(), m_seed);
}

// The address of the bytes reads as 0 when there are none.
std::array<std::uint64_t, 2> processSeeds() {
  std::array<std::uint64_t, 2> seeds{};
  if (const auto* bytes = reinterpret_cast<const void*>(getauxval(AT_RANDOM))) {
    std::memcpy(seeds.data(), bytes, sizeof(seeds));
  }
  return seeds;
}

}  // namespace vyn::profiling
