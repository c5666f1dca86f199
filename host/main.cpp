#include <exception>

#include "command_line.h"
#include "host_error.h"
#include "interruption.h"
#include "standard_streams.h"

namespace {

constexpr int kFailure = 1;

}  // namespace

int main(int argc, char** argv) {
  try {
    vyn::host::prepareStandardStreams();
    return vyn::host::runCommandLine(argc, argv);
  } catch (const vyn::host::ClosedPipe&) {
    vyn::host::dieOfClosedPipe();
  } catch (const std::exception& error) {
    vyn::host::reportLine(error.what());
    return kFailure;
  }
}
