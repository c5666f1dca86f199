#include "reading.h"

#include "document_check.h"
#include "guarded_reader.h"
#include "host_error.h"
#include "output_target.h"
#include "standard_streams.h"

namespace vyn::host {
namespace {

OutputTarget::Content contentOf(OutputKind kind) {
  switch (kind) {
    case OutputKind::kJsonDocument:
      return OutputTarget::Content::kReplaced;
    case OutputKind::kCsvListing:
      return OutputTarget::Content::kAppended;
    case OutputKind::kUnknown:
      break;
  }
  return OutputTarget::Content::kContinued;
}

// The console text of other readers is part of what was asked for; of the JSON reader it is not.
bool mustDivert(const OutputTarget& target, OutputKind kind) {
  return target.isStream() && kind == OutputKind::kJsonDocument;
}

// The JSON reader writes no payloads.
std::optional<PayloadGuard> guardPayloads(const Reading& reading,
                                          const std::filesystem::path& output) {
  if (!reading.payloads || reading.kind == OutputKind::kJsonDocument) {
    return std::nullopt;
  }
  return std::optional<PayloadGuard>(std::in_place, reading.log, *reading.payloads, reading.limit,
                                     output);
}

// Payloads of other readers may differ from what the log holds.
void checkPayloads(const std::optional<PayloadGuard>& payloads, OutputKind kind) {
  if (payloads && kind == OutputKind::kCsvListing) {
    payloads->checkWritten();
  }
}

// `file` is where the reader writes to, `target` what messages call it.
void runReader(const Reading& reading, const std::string& file, const std::string& target) {
  GuardedReader reader(reading.library, reading.log, reading.level);
  reader.read(reading.payloads.has_value());
  reader.generateOutput(file, target);
  reader.giveBack();
}

void runReader(const Reading& reading, const OutputTarget& target) {
  const NamedFile work = target.workFile().file();
  const std::uint64_t present = sizeOf(work);
  EnforcedLimit limit(reading.limit, present);
  runReader(reading, target.workFile().path(), target.name());
  const std::uint64_t size = sizeOf(work);
  reading.limit.check(size - std::min(size, present), target.name());
  limit.lift();
}

}  // namespace

void printOutput(const Reading& reading) {
  const auto payloads = guardPayloads(reading, {});
  EnforcedLimit limit(reading.limit, 0);
  runReader(reading, "", kStandardOutputName);
  limit.lift();
  checkPayloads(payloads, reading.kind);
  finishStandardOutput();
}

void writeOutput(const Reading& reading, OutputDestination destination,
                 TempFile::Existing existing) {
  const auto payloads = guardPayloads(reading, destination.file);
  OutputTarget target(std::move(destination), contentOf(reading.kind), existing);
  {
    std::optional<StandardOutputDiversion> diversion;
    if (mustDivert(target, reading.kind)) {
      diversion.emplace();
    }
    runReader(reading, target);
  }
  checkDocument(target.workFile().file(), reading.kind, target.name());
  checkPayloads(payloads, reading.kind);
  finishStandardOutput();  // first: when it fails, a listing must not have grown
  target.deliver();
}

}  // namespace vyn::host
