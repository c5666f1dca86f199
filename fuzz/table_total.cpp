#include "table_total.h"

#include "input/log_walk.h"
#include "input/table_count.h"

namespace vyn::fuzz {
namespace {

class TableCounter : public profiling::MessageSink {
 public:
  void chunk(const profiling::Chunk& bytes, const profiling::ChunkPlace& /*place*/) override {
    m_total += profiling::tableCount(*profiling::schema::GetProfileLog(bytes.data()));
  }
  void message(const profiling::schema::Message& /*message*/) override {}
  std::uint64_t total() const { return m_total; }

 private:
  std::uint64_t m_total = 0;
};

}  // namespace

std::uint64_t tablesOf(profiling::ByteSource& log) {
  TableCounter counter;
  [[maybe_unused]] const profiling::WalkResult walk = profiling::walkLog(log, counter);
  return counter.total();
}

std::uint64_t tablesOf(const std::string& logPath) {
  profiling::FileSource file(logPath);
  return tablesOf(file);
}

}  // namespace vyn::fuzz
