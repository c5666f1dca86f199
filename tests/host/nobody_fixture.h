#pragma once

#include <sys/types.h>

#include "host/host_fixture.h"

namespace vyn::test {

/// Runs the program as a user who may do nothing but what modes allow; root may do everything.
class NobodyTest : public HostTest {
 protected:
  /// The test's directory belongs to that user.
  ProgramResult runAsNobody(std::vector<std::string> arguments) const;

  /// The file becomes that user's own.
  void setMode(const std::string& name, mode_t mode) const;
};

}  // namespace vyn::test
