#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace vyn::profiling {

/// Stands for a text. Equal texts have equal fingerprints; two different ones of a megabyte have
/// them with a probability below 2^-80, whatever a log holds, for it depends on numbers that are
/// drawn anew for each process.
struct TextFingerprint {
  std::array<std::uint64_t, 2> sums{};
  std::size_t length = 0;

  bool operator==(const TextFingerprint&) const = default;
};

struct TextFingerprintHash {
  std::size_t operator()(const TextFingerprint& fingerprint) const { return fingerprint.sums[0]; }
};

/// Fingerprints of the texts of a chunk. Texts may overlap, each starting a few bytes behind the
/// last, and be named any number of times: looking at all their bytes each time would take far
/// longer than reading the log. So all fingerprints of a chunk together take time in proportion to
/// the chunk's bytes and to their number.
class TextFingerprints {
 public:
  /// To be called before the first text of each chunk. The bytes must live as long as its texts.
  void startChunk(std::span<const std::uint8_t> chunk);

  /// The fingerprint of a text of the chunk.
  TextFingerprint ofChunkText(std::string_view text);

 private:
  using Sums = std::array<std::uint64_t, 2>;

  static TextFingerprint of(std::string_view text);
  void sumUp();
  Sums sumsUpTo(const char* end) const;

  std::string_view m_chunk;
  std::size_t m_lookedAt = 0;  // bytes of the chunk's texts
  std::vector<Sums> m_sums;    // at every kStep-th byte of the chunk; empty until they pay
};

}  // namespace vyn::profiling
