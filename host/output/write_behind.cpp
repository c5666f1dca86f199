#include "host/output/write_behind.h"

#include <csignal>
#include <string_view>
#include <system_error>
#include <utility>

namespace vyn::host {
namespace {

// While it lives, this thread starts others that no signal interrupts: the first one handles them.
class SignalsElsewhere {
 public:
  SignalsElsewhere() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &m_previous);
  }
  ~SignalsElsewhere() { pthread_sigmask(SIG_SETMASK, &m_previous, nullptr); }
  SignalsElsewhere(const SignalsElsewhere&) = delete;
  SignalsElsewhere& operator=(const SignalsElsewhere&) = delete;

 private:
  sigset_t m_previous{};
};

}  // namespace

WriteBehind::WriteBehind(profiling::TextSink& sink) : m_sink(sink) {
  const SignalsElsewhere signals;
  try {
    m_thread = std::thread(&WriteBehind::run, this);
  } catch (const std::system_error&) {
  }
}

WriteBehind::~WriteBehind() {
  if (!m_thread.joinable()) {
    return;
  }
  {
    const std::lock_guard lock(m_mutex);
    m_isEnding = true;
  }
  m_changed.notify_all();
  m_thread.join();
}

std::unique_ptr<profiling::TextBlock> WriteBehind::exchange(
    std::unique_ptr<profiling::TextBlock> block, std::size_t size) {
  if (!m_thread.joinable()) {
    return m_sink.exchange(std::move(block), size);
  }
  std::unique_lock lock(m_mutex);
  m_changed.wait(lock, [this] { return m_waiting.size() < kMostWaiting || m_failure != nullptr; });
  if (m_failure != nullptr) {
    std::rethrow_exception(m_failure);
  }
  m_waiting.push_back({std::move(block), size});
  m_changed.notify_all();
  if (m_free.empty()) {
    return std::make_unique_for_overwrite<profiling::TextBlock>();
  }
  auto next = std::move(m_free.back());
  m_free.pop_back();
  return next;
}

void WriteBehind::write(std::string_view text) {
  finish();
  m_sink.write(text);
}

void WriteBehind::finish() {
  std::unique_lock lock(m_mutex);
  m_changed.wait(lock, [this] { return m_waiting.empty() || m_failure != nullptr; });
  if (m_failure != nullptr) {
    std::rethrow_exception(m_failure);
  }
}

void WriteBehind::run() {
  try {
    writePieces();
  } catch (...) {
    const std::lock_guard lock(m_mutex);
    m_failure = std::current_exception();
  }
  m_changed.notify_all();
}

void WriteBehind::writePieces() {
  std::unique_lock lock(m_mutex);
  for (;;) {
    m_changed.wait(lock, [this] { return !m_waiting.empty() || m_isEnding; });
    if (m_waiting.empty()) {
      return;
    }
    const Piece& piece = m_waiting.front();  // stays where it is while others are added
    lock.unlock();
    m_sink.write({piece.block->data(), piece.size});
    lock.lock();
    m_free.push_back(std::move(m_waiting.front().block));
    m_waiting.pop_front();
    m_changed.notify_all();
  }
}

}  // namespace vyn::host
