#include "input/log_walk.h"

namespace vyn::profiling {
namespace {

class VerifyingSink : public ChunkSink {
 public:
  VerifyingSink(MessageSink& sink, ChunkVerifier& verifier) : m_sink(sink), m_verifier(verifier) {}

  ChunkBuffer roomFor(std::size_t size) override { return m_sink.roomFor(size); }

  bool take(const Chunk& chunk, const ChunkPlace& place) override {
    if (!m_verifier.isSound(chunk.bytes()) || !m_sink.wants(chunk, place)) {
      m_sink.refused(chunk, place);
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
  ChunkVerifier& m_verifier;
  std::uint64_t m_messages = 0;
};

}  // namespace

WalkResult walkLog(ByteSource& source, MessageSink& sink) {
  ChunkVerifier verifier;
  return walkLog(source, sink, verifier);
}

WalkResult walkLog(ByteSource& source, MessageSink& sink, ChunkVerifier& verifier,
                   std::uint64_t start) {
  VerifyingSink verifying(sink, verifier);
  WalkResult result = walkChunks(source, verifying, start);
  result.messages = verifying.messages();
  return result;
}

}  // namespace vyn::profiling
