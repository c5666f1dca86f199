#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "input/log_walk.h"
#include "json/json_text.h"

namespace vyn::host {

/// What was copied.
struct CopiedChunks {
  std::uint64_t chunks = 0;
  std::uint64_t messages = 0;
  std::uint64_t bytes = 0;  ///< with the chunks' lengths
};

/// Passes whole chunks on, block by block, as they stand in their log. One that the log's end cuts
/// short is left out.
class ChunkCopy : public profiling::MessageSink {
 public:
  /// `sink` must outlive it. What it throws comes out of the operations.
  explicit ChunkCopy(profiling::TextSink& sink)
      : m_sink(sink), m_block(std::make_unique_for_overwrite<profiling::TextBlock>()) {}

  void chunk(const profiling::Chunk& chunk, const profiling::ChunkPlace& place) override;
  void message(const profiling::schema::Message& /*message*/) override {}

  /// To be called when the log was walked over: passes on what is left.
  void finish();

  const CopiedChunks& copied() const { return m_copied; }

 private:
  void write(std::string_view bytes);

  profiling::TextSink& m_sink;
  std::unique_ptr<profiling::TextBlock> m_block;
  std::size_t m_filled = 0;  // bytes of the block
  CopiedChunks m_copied;
};

}  // namespace vyn::host
