#include "cli/program.h"

#include <cstdio>
#include <exception>

#include "files/file_error.h"
#include "files/interruption.h"
#include "files/printable_text.h"
#include "files/standard_streams.h"

namespace vyn::cli {

void reportLine(const std::string& program, const std::string& text) {
  const std::string line =
      program + ": " + files::printable(text, files::LineFeeds::kEscaped) + "\n";
  std::fputs(line.c_str(), stderr);
}

int runProgram(const std::string& program, const std::function<int()>& work) {
  try {
    files::prepareStandardStreams();
    return work();
  } catch (const files::ClosedPipe&) {
    files::dieOfClosedPipe();
  } catch (const std::exception& error) {
    reportLine(program, error.what());
  }
  return kFailed;
}

}  // namespace vyn::cli
