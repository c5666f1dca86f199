#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>
#include <vector>

#include "json/json_text.h"

namespace vyn::host {

/// Passes a text on to another sink from a thread of its own, so that the next block is filled
/// while the last one is written. What the other sink throws comes out of the next operation here,
/// and the rest is dropped. A text that is not finished ends behind its last block: where it ends
/// does not depend on time. Without a thread to be had it writes by itself.
class WriteBehind : public profiling::TextSink {
 public:
  /// `sink` must outlive it, and nobody else may use it until `finish` has returned.
  explicit WriteBehind(profiling::TextSink& sink);
  ~WriteBehind() override;
  WriteBehind(const WriteBehind&) = delete;
  WriteBehind& operator=(const WriteBehind&) = delete;

  void write(std::string_view text) override;
  std::unique_ptr<profiling::TextBlock> exchange(std::unique_ptr<profiling::TextBlock> block,
                                                 std::size_t size) override;

  /// Returns when the sink has all of the text.
  void finish();

 private:
  static constexpr std::size_t kMostWaiting = 3;  // blocks

  struct Piece {
    std::unique_ptr<profiling::TextBlock> block;
    std::size_t size;
  };

  void run();
  void writePieces();

  profiling::TextSink& m_sink;
  std::mutex m_mutex;  // guards what follows
  std::condition_variable m_changed;
  std::deque<Piece> m_waiting;  // the first one while it is written, too
  std::vector<std::unique_ptr<profiling::TextBlock>> m_free;
  std::exception_ptr m_failure;
  bool m_isEnding = false;
  std::thread m_thread;  // last: it uses all of the above
};

}  // namespace vyn::host
