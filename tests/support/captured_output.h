#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "support/text_file.h"

namespace vyn::test {

/// What `call` prints to standard output, masked.
template <typename Call>
std::string printedBy(const Call& call) {
  std::fflush(stdout);
  testing::internal::CaptureStdout();
  call();
  std::fflush(stdout);
  return masked(testing::internal::GetCapturedStdout());
}

}  // namespace vyn::test
