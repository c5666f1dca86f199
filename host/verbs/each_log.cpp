#include "host/verbs/each_log.h"

#include "cli/program.h"
#include "files/file_error.h"
#include "host/report_line.h"

namespace vyn::host {
namespace {

int graver(int left, int right) {
  if (left == cli::kFailed || right == cli::kFailed) {
    return cli::kFailed;
  }
  return left == cli::kDone ? right : left;
}

}  // namespace

int readEachLog(const std::vector<std::string>& paths,
                const std::function<int(const LogFile&)>& read) {
  int status = cli::kDone;
  for (const std::string& path : paths) {
    try {
      status = graver(status, read(findLog(path)));
    } catch (const files::ClosedPipe&) {
      throw;  // nobody reads what is told of the other logs
    } catch (const files::FileError& error) {
      reportLine(error.what());
      status = cli::kFailed;
    }
  }
  return status;
}

}  // namespace vyn::host
