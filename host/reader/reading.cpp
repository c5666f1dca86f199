#include "host/reader/reading.h"

#include <algorithm>

#include "files/standard_streams.h"
#include "host/output/document_check.h"
#include "host/output/output_target.h"
#include "host/reader/guarded_reader.h"
#include "host/reader/reader_output.h"

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
void passOn(ReaderOutput& said, const OutputTarget& target, OutputKind kind) {
  if (target.isStream() && kind == OutputKind::kJsonDocument) {
    said.passToStandardError();
  } else {
    said.passOn();
  }
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
void checkPayloads(const std::optional<PayloadGuard>& payloads, const ReaderOutput& said,
                   OutputKind kind) {
  if (!payloads) {
    return;
  }
  if (const auto name = said.unwrittenPayload()) {
    payloads->throwUnwritten(*name);
  }
  if (kind == OutputKind::kCsvListing) {
    payloads->checkWritten();
  }
}

// `file` is where the reader writes to, of `present` bytes; `target` is what messages call it.
void runReader(const Reading& reading, const std::string& file, std::uint64_t present,
               const std::string& target, ReaderOutput& said) {
  {
    const EnforcedLimit limit(reading.limit, present);
    GuardedReader reader(reading.library, reading.log, reading.level);
    reader.read(reading.payloads.has_value(), said);
    reader.generateOutput(file, target, said);
    reader.giveBack();
    said.end();
  }
  reading.limit.check(said.size(), files::kStandardOutputName);
}

void runReader(const Reading& reading, const OutputTarget& target, ReaderOutput& said) {
  const files::NamedFile work = target.workFile().file();
  const std::uint64_t present = files::sizeOf(work);
  runReader(reading, target.workFile().path(), present, target.name(), said);
  const std::uint64_t size = files::sizeOf(work);
  reading.limit.check(size - std::min(size, present), target.name());
}

}  // namespace

void printOutput(const Reading& reading) {
  const auto payloads = guardPayloads(reading, {});
  ReaderOutput said;
  runReader(reading, "", 0, files::kStandardOutputName, said);
  checkPayloads(payloads, said, reading.kind);
  said.passOn();
  files::finishStandardOutput();
}

void writeOutput(const Reading& reading, files::Destination destination,
                 files::TempFile::Existing existing) {
  const auto payloads = guardPayloads(reading, destination.file);
  OutputTarget target(std::move(destination), contentOf(reading.kind), existing);
  ReaderOutput said;
  runReader(reading, target, said);
  checkDocument(target.workFile().file(), reading.kind, target.name());
  checkPayloads(payloads, said, reading.kind);
  // Who sees the summary can rely on the listing.
  const bool isListingFirst = reading.kind == OutputKind::kCsvListing && !target.isStandardOutput();
  if (isListingFirst) {
    target.deliver();
  }
  passOn(said, target, reading.kind);
  files::finishStandardOutput();  // before a document takes the place of another
  if (!isListingFirst) {
    target.deliver();
  }
}

}  // namespace vyn::host
