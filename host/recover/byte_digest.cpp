#include "host/recover/byte_digest.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace vyn::host {

struct ByteDigest::State {
  XXH3_state_t state;
};

ByteDigest::ByteDigest() : m_state(std::make_unique<State>()) {
  XXH3_64bits_reset(&m_state->state);
}

ByteDigest::~ByteDigest() = default;

void ByteDigest::add(std::string_view bytes) {
  XXH3_64bits_update(&m_state->state, bytes.data(), bytes.size());
}

std::uint64_t ByteDigest::value() const { return XXH3_64bits_digest(&m_state->state); }

}  // namespace vyn::host
