#pragma once

#include <cstdint>
#include <span>

namespace vyn::profiling {

/// Judges the chunks of one log, in their order.
class ChunkVerifier {
 public:
  /// True when the chunk is a sound buffer of the log's schema: every table, string
  /// and vector lies inside it, required fields are there, and events nest at most 64 tables deep
  /// (which also bounds every recursion over events). Unaligned data is accepted.
  ///
  /// Vectors and tables may be shared, so that a few bytes name millions of tables. A chunk may
  /// name as many tables as it has bytes; kSharedTableAllowance more are there for all chunks of
  /// the log together.
  bool isSound(std::span<const std::uint8_t> chunk);

  /// The same for a chunk of which it is not known whether it is one of the log's: it takes
  /// nothing of what is there for all chunks together.
  static bool isSoundByItself(std::span<const std::uint8_t> chunk);

  /// How deep tables may nest, the root among them.
  static constexpr std::uint32_t kMaxTableDepth = 64;

  /// Tables that a log may name beyond one for each of its bytes.
  static constexpr std::uint32_t kSharedTableAllowance = 2'097'152;

 private:
  std::uint32_t m_allowance = kSharedTableAllowance;  // what is left of it
};

}  // namespace vyn::profiling
