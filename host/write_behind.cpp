#include "write_behind.h"

#include <algorithm>
#include <csignal>
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
  m_thread = std::thread(&WriteBehind::run, this);
}

WriteBehind::~WriteBehind() {
  {
    const std::lock_guard lock(m_mutex);
    m_waiting.clear();
  }
  stop();
}

void WriteBehind::write(std::string_view text) {
  for (; !text.empty(); text.remove_prefix(std::min(text.size(), kPieceSize))) {
    writePiece(std::string(text.substr(0, kPieceSize)));
  }
}

void WriteBehind::writePiece(std::string piece) {
  std::unique_lock lock(m_mutex);
  m_changed.wait(lock, [this] { return m_waiting.size() < kMostWaiting || m_failure != nullptr; });
  if (m_failure != nullptr) {
    std::rethrow_exception(m_failure);
  }
  m_waiting.push_back(std::move(piece));
  m_changed.notify_all();
}

void WriteBehind::finish() {
  stop();
  if (m_failure != nullptr) {
    std::rethrow_exception(m_failure);
  }
}

void WriteBehind::stop() {
  {
    const std::lock_guard lock(m_mutex);
    m_isEnding = true;
    m_changed.notify_all();
  }
  if (m_thread.joinable()) {
    m_thread.join();
  }
}

void WriteBehind::run() {
  std::unique_lock lock(m_mutex);
  for (;;) {
    m_changed.wait(lock, [this] { return !m_waiting.empty() || m_isEnding; });
    if (m_waiting.empty()) {
      return;
    }
    const std::string piece = std::move(m_waiting.front());
    lock.unlock();
    std::exception_ptr failure;
    try {
      m_sink.write(piece);
    } catch (...) {
      failure = std::current_exception();
    }
    lock.lock();
    if (failure != nullptr) {
      m_failure = failure;
      m_waiting.clear();
      m_changed.notify_all();
      return;
    }
    if (!m_waiting.empty()) {
      m_waiting.pop_front();
    }
    m_changed.notify_all();
  }
}

}  // namespace vyn::host
