// Writes a text by a thread of its own while it is made; the thread sanitizer, with which this
// program is built, ends it with an error when an access is not guarded.

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

#include "host/output/write_behind.h"

namespace {

constexpr int kBlocks = 200;
constexpr std::size_t kSize = 1000;  // bytes of a block that are used

class SummingSink : public vyn::profiling::TextSink {
 public:
  explicit SummingSink(std::size_t limit) : m_limit(limit) {}

  void write(std::string_view text) override {
    for (const char character : text) {
      m_sum += static_cast<unsigned char>(character);
    }
    m_size += text.size();
    if (m_size > m_limit) {
      throw std::runtime_error("full");
    }
  }

  std::size_t sum() const { return m_sum; }

 private:
  std::size_t m_limit;
  std::size_t m_size = 0;
  std::size_t m_sum = 0;
};

// True when all of it was written.
bool writeTo(SummingSink& sink, bool isFinished) {
  vyn::host::WriteBehind written(sink);
  try {
    auto block = std::make_unique<vyn::profiling::TextBlock>();
    for (int i = 0; i < kBlocks; ++i) {
      block->fill(1);
      block = written.exchange(std::move(block), kSize);
    }
    if (isFinished) {
      written.finish();
    }
    return isFinished;
  } catch (const std::runtime_error&) {
    return false;
  }
}

}  // namespace

int main() {
  SummingSink whole(kBlocks * kSize);
  SummingSink unfinished(kBlocks * kSize);
  SummingSink full(kBlocks * kSize / 2);
  const bool holds = writeTo(whole, true) && whole.sum() == kBlocks * kSize &&
                     !writeTo(unfinished, false) && unfinished.sum() == whole.sum() &&
                     !writeTo(full, true);
  std::puts(holds ? "holds" : "does not hold");
  return holds ? EXIT_SUCCESS : EXIT_FAILURE;
}
