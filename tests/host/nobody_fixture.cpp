#include "host/nobody_fixture.h"

#include <sys/stat.h>
#include <unistd.h>

namespace vyn::test {
namespace {

namespace fs = std::filesystem;

constexpr uid_t kNobody = 65534;

}  // namespace

// The program and its readers are copied, for their own place may be closed to that user.
ProgramResult NobodyTest::runAsNobody(std::vector<std::string> arguments) const {
  const fs::path bin = directory() / "bin";
  fs::create_directory(bin);
  for (const char* file : {VYN_PROFILE_VIEWER, VYN_JSON_PLUGIN, VYN_SUMMARY_PLUGIN}) {
    fs::copy(file, bin);
  }
  ProgramCall restricted = call(std::move(arguments));
  restricted.words.front() = bin / "vyn-profile-viewer";
  if (geteuid() == 0) {
    const std::string id = std::to_string(kNobody);
    restricted.words.insert(restricted.words.begin(),
                            {"setpriv", "--reuid", id, "--regid", id, "--clear-groups"});
    EXPECT_EQ(chown(directory().c_str(), kNobody, kNobody), 0);
  }
  ProgramResult result = runProgram(restricted);
  fs::remove_all(bin);
  return result;
}

void NobodyTest::setMode(const std::string& name, mode_t mode) const {
  chmod((directory() / name).c_str(), mode);
  if (geteuid() == 0) {
    EXPECT_EQ(chown((directory() / name).c_str(), kNobody, kNobody), 0);
  }
}

}  // namespace vyn::test
