// Damages a log in every systematic way, lets both readers judge each form of it, and holds what is
// found in it, and what is salvaged of it, against the verifier:
//   damage_driver LOG EVERY SHARD
// Takes every EVERY-th case, from case SHARD on, and says how many were sound. Aborts, naming the
// case, when the readers disagree, judge wrongly, or take memory out of proportion.

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "both_readers.h"
#include "check_run.h"
#include "damages.h"
#include "input_file.h"
#include "recover_run.h"

namespace {

using vyn::test::Expectation;

std::string g_currentCase;

// Sanitizers abort too, when their options say so.
void nameCurrentCase(int /*signal*/) {
  [[maybe_unused]] const ssize_t written =
      write(STDERR_FILENO, g_currentCase.data(), g_currentCase.size());
}

struct Tally {
  std::size_t sound = 0;
  std::size_t refused = 0;
};

std::string contentOf(const char* path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void judge(const std::string& what, const std::string& log, Expectation expectation, Tally& tally) {
  g_currentCase = "the log: " + what + "\n";
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(log.data());
  vyn::fuzz::checkFindings({bytes, log.size()});
  vyn::fuzz::checkSalvage({bytes, log.size()});
  const vyn::fuzz::InputFile file(bytes, log.size());
  const bool isSound = vyn::fuzz::readWithBoth(file.path()).isSound;
  ++(isSound ? tally.sound : tally.refused);
  if (expectation != Expectation::kEither && isSound != (expectation == Expectation::kSound)) {
    std::cerr << "wrongly taken for " << (isSound ? "sound" : "damaged") << std::endl;
    std::abort();
  }
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 4) {
    std::cerr << "usage: damage_driver LOG EVERY SHARD\n";
    return 2;
  }
  std::signal(SIGABRT, nameCurrentCase);
  if (std::freopen("/dev/null", "w", stdout) == nullptr) {  // a line for each refused log
    return 2;
  }
  const std::string log = contentOf(arguments[1]);
  const std::size_t every = std::stoul(arguments[2]);
  std::size_t skip = std::stoul(arguments[3]);
  Tally tally;
  vyn::test::forEachDamage(
      log, [&](const std::string& what, const std::string& damaged, Expectation expectation) {
        if (skip-- == 0) {
          skip = every - 1;
          judge(what, damaged, expectation, tally);
        }
      });
  std::cerr << log.size() << " bytes, " << tally.sound + tally.refused << " cases: " << tally.sound
            << " sound, " << tally.refused << " refused" << std::endl;
  return tally.sound > 0 && tally.refused > 0 ? 0 : 1;
}
