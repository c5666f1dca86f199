#include "option_scope.h"

namespace vyn::host {
namespace {

constexpr const char* kIgnoredForDocuments[] = {"--level", "--payloads", "--header"};

}  // namespace

void refuseIgnoredOptions(const CLI::App& commandLine, OutputKind kind) {
  if (kind != OutputKind::kJsonDocument) {
    return;
  }
  for (const char* name : kIgnoredForDocuments) {
    if (commandLine.count(name) > 0) {
      throw CLI::ValidationError(name, "has no effect on a JSON document; add --reader summary");
    }
  }
}

}  // namespace vyn::host
