#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace vyn::host {

/// What tells two runs of bytes apart, but for one pair in 2^64: made of all of them, in order.
/// Against accidents, not against bytes that are made to look alike.
class ByteDigest {
 public:
  ByteDigest();
  ~ByteDigest();
  ByteDigest(const ByteDigest&) = delete;
  ByteDigest& operator=(const ByteDigest&) = delete;

  void add(std::string_view bytes);

  /// Of all bytes that were added.
  std::uint64_t value() const;

 private:
  struct State;
  std::unique_ptr<State> m_state;
};

}  // namespace vyn::host
