#include "cli/progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace vyn::cli {
namespace {

constexpr std::chrono::seconds kPatience(1);
constexpr std::chrono::milliseconds kInterval(200);
constexpr std::uint64_t kMegabyte = 1'000'000;

std::string describe(std::uint64_t size, std::uint64_t goal) {
  std::string megabytes = std::to_string(size / kMegabyte) + " MB";
  if (goal == 0) {
    return megabytes;
  }
  const auto percent =
      std::min(100.0, 100.0 * static_cast<double>(size) / static_cast<double>(goal));
  return megabytes + " (" + std::to_string(static_cast<int>(percent)) + " %)";
}

}  // namespace

Progress::Progress(std::string program, std::uint64_t goal)
    : m_program(std::move(program)),
      m_goal(goal),
      m_isShown(isatty(STDERR_FILENO) != 0 && std::getenv("CI") == nullptr),
      m_next(Clock::now() + kPatience) {}

Progress::~Progress() { clear(); }

void Progress::update(std::uint64_t size) {
  if (m_isShown && Clock::now() >= m_next) {
    show(size);
    m_next = Clock::now() + kInterval;
  }
}

void Progress::show(std::uint64_t size) {
  const std::string line = m_program + ": " + describe(size, m_goal);
  clear();
  std::fputs(line.c_str(), stderr);
  m_shown = line.size();
}

void Progress::clear() {
  if (m_shown > 0) {
    std::fputs(("\r" + std::string(m_shown, ' ') + "\r").c_str(), stderr);
    m_shown = 0;
  }
}

}  // namespace vyn::cli
