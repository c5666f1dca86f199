#include "hashed_output.h"

#include <fcntl.h>
#include <unistd.h>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <array>

#include "check.h"

namespace vyn::fuzz {

struct Hash::State {
  XXH3_state_t state;
};

Hash::Hash() : m_state(std::make_unique<State>()) { XXH3_64bits_reset(&m_state->state); }

Hash::~Hash() = default;

void Hash::add(const void* bytes, std::size_t size) {
  XXH3_64bits_update(&m_state->state, bytes, size);
}

std::uint64_t Hash::value() const { return XXH3_64bits_digest(&m_state->state); }

HashedFile::HashedFile() {
  std::array<int, 2> ends{};
  check(pipe2(ends.data(), O_CLOEXEC) == 0, "there is a pipe for the output");
  m_readEnd = ends[0];
  m_writeEnd = ends[1];
  m_thread = std::thread([this] {
    std::array<char, 65536> block;
    for (ssize_t count = 0; (count = read(m_readEnd, block.data(), block.size())) > 0;) {
      m_hash.add(block.data(), static_cast<std::size_t>(count));
    }
  });
}

HashedFile::~HashedFile() {
  if (m_thread.joinable()) {
    finish();
  }
  close(m_readEnd);
}

std::string HashedFile::path() const { return "/proc/self/fd/" + std::to_string(m_writeEnd); }

std::uint64_t HashedFile::finish() {
  close(m_writeEnd);
  m_thread.join();
  return m_hash.value();
}

}  // namespace vyn::fuzz
