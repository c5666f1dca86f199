#include "cli/program.h"
#include "host/command_line.h"
#include "host/report_line.h"

int main(int argc, char** argv) {
  return vyn::cli::runProgram(vyn::host::kProgramName,
                              [&] { return vyn::host::runCommandLine(argc, argv); });
}
