#include "input/log_walk.h"

#include "input/chunk_verifier.h"

namespace vyn::profiling {
namespace {

class VerifyingSink : public ChunkSink {
 public:
  explicit VerifyingSink(MessageSink& sink) : m_sink(sink) {}

  bool take(const Chunk& chunk, const ChunkPlace& place) override {
    if (!m_verifier.isSound(chunk.bytes())) {
      return false;
    }
    m_sink.chunk(chunk, place);
    const schema::ProfileLog& log = *schema::GetProfileLog(chunk.data());
    if (log.header() != nullptr) {
      m_sink.header(*log.header());
    }
    if (log.messages() != nullptr) {
      for (const schema::Message* message : *log.messages()) {
        m_sink.message(*message);
      }
      m_messages += log.messages()->size();
    }
    return true;
  }

  std::uint64_t messages() const { return m_messages; }

 private:
  MessageSink& m_sink;
  std::uint64_t m_messages = 0;
  ChunkVerifier m_verifier;
};

}  // namespace

WalkResult walkLog(ByteSource& source, MessageSink& sink) {
  VerifyingSink verifying(sink);
  WalkResult result = walkChunks(source, verifying);
  result.messages = verifying.messages();
  return result;
}

}  // namespace vyn::profiling
