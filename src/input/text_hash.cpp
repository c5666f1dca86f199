#include "input/text_hash.h"

#include <sys/auxv.h>

#include <cstring>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace vyn::profiling {

std::size_t TextHash::operator()(std::string_view text) const {
  return XXH3_64bits_withSeed(text.data(), text.size(), m_seed);
}

// The kernel hands 16 random bytes to each process, at an address that reads as 0 without them.
std::uint64_t TextHash::processSeed() {
  std::uint64_t seed = 0;
  if (const auto* bytes = reinterpret_cast<const void*>(getauxval(AT_RANDOM))) {
    std::memcpy(&seed, bytes, sizeof(seed));
  }
  return seed;
}

}  // namespace vyn::profiling
