#include "input/text_fingerprints.h"

#include "base/text_hash.h"

namespace vyn::profiling {
namespace {

// A fingerprint is the value of the polynomial whose coefficients are the text's bytes, at two
// random places, modulo a prime. That of a text is then the difference of two others: of the bytes
// up to its end, and of those up to its start times a power.

constexpr std::uint64_t kPrime = (std::uint64_t{1} << 61U) - 1;
constexpr std::size_t kStep = 128;  // bytes

__extension__ using Product = unsigned __int128;

std::uint64_t multiplied(std::uint64_t left, std::uint64_t right) {
  const Product product = static_cast<Product>(left) * right;
  const std::uint64_t sum =
      static_cast<std::uint64_t>(product & kPrime) + static_cast<std::uint64_t>(product >> 61U);
  return sum >= kPrime ? sum - kPrime : sum;
}

const std::array<std::uint64_t, 2>& places() {
  static const std::array<std::uint64_t, 2> places = [] {
    auto numbers = processSeeds();
    for (std::uint64_t& number : numbers) {
      number = number % (kPrime - 2) + 2;
    }
    return numbers;
  }();
  return places;
}

std::uint64_t power(std::uint64_t base, std::size_t exponent) {
  std::uint64_t result = 1;
  for (; exponent > 0; exponent /= 2) {
    if (exponent % 2 != 0) {
      result = multiplied(result, base);
    }
    base = multiplied(base, base);
  }
  return result;
}

void add(std::string_view bytes, std::array<std::uint64_t, 2>& sums) {
  const auto [first, second] = places();
  for (const char byte : bytes) {
    // Not less than 1, so that leading zero bytes count. Below the prime again after the next step.
    const std::uint64_t coefficient = static_cast<unsigned char>(byte) + 1U;
    sums[0] = multiplied(sums[0], first) + coefficient;
    sums[1] = multiplied(sums[1], second) + coefficient;
  }
  for (std::uint64_t& sum : sums) {
    sum %= kPrime;
  }
}

}  // namespace

void TextFingerprints::startChunk(std::span<const std::uint8_t> chunk) {
  m_chunk = {reinterpret_cast<const char*>(chunk.data()), chunk.size()};
  m_lookedAt = 0;
  m_sums = std::vector<Sums>();
}

TextFingerprint TextFingerprints::of(std::string_view text) {
  TextFingerprint fingerprint{{}, text.size()};
  add(text, fingerprint.sums);
  return fingerprint;
}

// As long as the texts have no more bytes than their chunk, they are looked at one by one: a usual
// log stays below that, and only what lies beyond pays for the sums.
TextFingerprint TextFingerprints::ofChunkText(std::string_view text) {
  if (m_lookedAt + text.size() <= m_chunk.size()) {
    m_lookedAt += text.size();
    return of(text);
  }
  if (m_sums.empty()) {
    sumUp();
  }
  TextFingerprint fingerprint{sumsUpTo(text.data() + text.size()), text.size()};
  const Sums before = sumsUpTo(text.data());
  for (std::size_t i = 0; i < before.size(); ++i) {
    const std::uint64_t shifted = multiplied(before[i], power(places()[i], text.size()));
    fingerprint.sums[i] = (fingerprint.sums[i] + kPrime - shifted) % kPrime;
  }
  return fingerprint;
}

void TextFingerprints::sumUp() {
  m_sums.reserve(m_chunk.size() / kStep + 1);
  Sums sums{};
  m_sums.push_back(sums);
  for (std::size_t end = kStep; end <= m_chunk.size(); end += kStep) {
    add(m_chunk.substr(end - kStep, kStep), sums);
    m_sums.push_back(sums);
  }
}

TextFingerprints::Sums TextFingerprints::sumsUpTo(const char* end) const {
  const auto offset = static_cast<std::size_t>(end - m_chunk.data());
  Sums sums = m_sums[offset / kStep];
  add(m_chunk.substr(offset - offset % kStep, offset % kStep), sums);
  return sums;
}

}  // namespace vyn::profiling
