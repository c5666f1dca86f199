#include "interruption.h"

#include <unistd.h>

#include <csignal>
#include <vector>

namespace vyn::host {
namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

std::vector<char> g_pathStorage;
// What a signal handler may look at: a pointer that is set last and cleared first.
const char* volatile g_path = nullptr;

extern "C" void removeAndDie(int signal) {
  if (g_path != nullptr) {
    unlink(g_path);
  }
  // The default action was restored when this handler was entered.
  raise(signal);
}

void handle(int signal) {
  struct sigaction previous {};
  sigaction(signal, nullptr, &previous);
  if (previous.sa_handler == SIG_IGN) {
    return;  // as under nohup
  }
  struct sigaction action {};
  action.sa_handler = removeAndDie;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(signal, &action, nullptr);
}

sigset_t handledSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : kSignals) {
    sigaddset(&set, signal);
  }
  return set;
}

}  // namespace

RemovalOnSignal::RemovalOnSignal(const std::string& path) {
  g_pathStorage.assign(path.c_str(), path.c_str() + path.size() + 1);
  g_path = g_pathStorage.data();
  for (const int signal : kSignals) {
    handle(signal);
  }
}

RemovalOnSignal::~RemovalOnSignal() { g_path = nullptr; }

SignalDelay::SignalDelay() {
  const sigset_t set = handledSignals();
  sigprocmask(SIG_BLOCK, &set, nullptr);
}

SignalDelay::~SignalDelay() {
  const sigset_t set = handledSignals();
  sigprocmask(SIG_UNBLOCK, &set, nullptr);
}

}  // namespace vyn::host
