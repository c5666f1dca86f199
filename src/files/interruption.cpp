#include "files/interruption.h"

#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace vyn::files {
namespace {

// All that end the program unless told otherwise; the real-time signals are beside them. SIGPIPE
// and SIGXFSZ are missing, for they are ignored.
constexpr int kSignals[] = {SIGINT,  SIGTERM, SIGHUP,  SIGQUIT, SIGALRM, SIGVTALRM, SIGPROF,
                            SIGUSR1, SIGUSR2, SIGXCPU, SIGIO,   SIGPWR,  SIGSTKFLT};
// The same, but for mistakes of the program, which cannot wait; only SIGABRT can, for abort() lets
// it through by itself.
constexpr int kCrashes[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGSYS, SIGTRAP, SIGABRT};

constexpr int kExitStatusOfSignals = 128;  // what a shell adds to the number of a signal

struct Slot {
  std::vector<char> storage;
  // What a signal handler may look at: a pointer that is set last and cleared first.
  const char* volatile path = nullptr;
};

std::array<Slot, 4> g_slots;

extern "C" void removeAndDie(int signal) {
  for (const Slot& slot : g_slots) {
    if (slot.path != nullptr) {
      unlink(slot.path);
    }
  }
  // Both wait until this handler returns: others that come meanwhile must not end the program
  // before its files are gone.
  std::signal(signal, SIG_DFL);
  raise(signal);
}

void handle(int signal) {
  struct sigaction previous {};
  sigaction(signal, nullptr, &previous);
  if (previous.sa_handler != SIG_DFL) {
    return;  // ignored, as under nohup, or watched by a sanitizer
  }
  struct sigaction action {};
  action.sa_handler = removeAndDie;
  sigfillset(&action.sa_mask);
  sigaction(signal, &action, nullptr);
}

void handleAll() {
  for (const int signal : kSignals) {
    handle(signal);
  }
  for (const int signal : kCrashes) {
    handle(signal);
  }
  for (int signal = SIGRTMIN; signal <= SIGRTMAX; ++signal) {
    handle(signal);
  }
}

sigset_t delayedSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : kSignals) {
    sigaddset(&set, signal);
  }
  sigaddset(&set, SIGABRT);
  for (int signal = SIGRTMIN; signal <= SIGRTMAX; ++signal) {
    sigaddset(&set, signal);
  }
  return set;
}

std::size_t freeSlot() {
  for (std::size_t i = 0; i < g_slots.size(); ++i) {
    if (g_slots[i].path == nullptr) {
      return i;
    }
  }
  throw std::logic_error("more files to be removed than there is room for");
}

}  // namespace

RemovalOnSignal::RemovalOnSignal(const std::string& path) : m_slot(freeSlot()) {
  Slot& slot = g_slots[m_slot];
  slot.storage.assign(path.c_str(), path.c_str() + path.size() + 1);
  slot.path = slot.storage.data();
  handleAll();
}

RemovalOnSignal::~RemovalOnSignal() { g_slots[m_slot].path = nullptr; }

SignalDelay::SignalDelay() {
  const sigset_t set = delayedSignals();
  sigprocmask(SIG_BLOCK, &set, &m_previous);
}

SignalDelay::~SignalDelay() { sigprocmask(SIG_SETMASK, &m_previous, nullptr); }

void dieOfClosedPipe() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGPIPE);
  std::signal(SIGPIPE, SIG_DFL);
  sigprocmask(SIG_UNBLOCK, &set, nullptr);
  raise(SIGPIPE);
  std::_Exit(kExitStatusOfSignals + SIGPIPE);
}

}  // namespace vyn::files
