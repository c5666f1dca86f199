#include "check.h"

#include <cstdlib>
#include <iostream>

namespace vyn::fuzz {

void check(bool holds, const std::string& what) {
  if (!holds) {
    std::cerr << "does not hold: " << what << std::endl;
    std::abort();
  }
}

}  // namespace vyn::fuzz
