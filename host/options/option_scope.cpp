#include "host/options/option_scope.h"

#include <string>

#include "files/standard_streams.h"

namespace vyn::host {
namespace {

void refuse(const CLI::App& commandLine, std::initializer_list<const char*> names,
            const std::string& reason) {
  for (const char* name : names) {
    if (commandLine.count(name) > 0) {
      throw CLI::ValidationError(name, reason);
    }
  }
}

}  // namespace

void refuseIgnoredOptions(const CLI::App& commandLine, OutputKind kind) {
  switch (kind) {
    case OutputKind::kJsonDocument:
      refuse(commandLine, {"--level", "--payloads", "--header"},
             "has no effect on a JSON document; add --reader summary");
      return;
    case OutputKind::kCsvListing:
      refuse(commandLine, {"--force"}, "has no effect on a listing, which is added to its file");
      return;
    case OutputKind::kUnknown:
      return;
  }
}

void refuseForceWithoutFile(const CLI::App& commandLine, const std::string& path) {
  if (path == files::kStandardStreamPath) {
    refuse(commandLine, {"--force"},
           "has no effect on a log from standard input, whose document goes to standard output");
  }
}

}  // namespace vyn::host
