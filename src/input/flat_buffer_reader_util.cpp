#include "input/flat_buffer_reader_util.h"

#include "log/logger_registry.h"

namespace vyn::profiling {

bool FlatBufferReaderUtil::load(const Chunk& chunk) {
  if (!m_verifier.isSound(chunk.bytes())) {
    log::log(log::kError, "Corrupted flatbuffer binary stream");
    return false;
  }
  m_root = schema::GetProfileLog(chunk.data());
  if (m_header == nullptr) {
    m_header = m_root->header();
  }
  m_messages = m_root->messages();
  m_messageCounter = 0;
  return true;
}

void FlatBufferReaderUtil::release() {
  m_root = nullptr;
  m_header = nullptr;
  m_messages = nullptr;
}

const schema::Message* FlatBufferReaderUtil::nextMessage() {
  if (m_messages != nullptr && m_messageCounter < m_messages->size()) {
    return m_messages->Get(m_messageCounter++);
  }
  log::log(log::kDebug, "profiling::FlatBufferReaderUtil no more messages! (Message Counter: %d)",
           static_cast<int>(m_messageCounter));
  return nullptr;
}

}  // namespace vyn::profiling
