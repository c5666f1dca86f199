#include "host/reader/reader_names.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

namespace vyn::host {
namespace {

struct ReaderName {
  const char* name;
  const char* library;
  OutputKind output;
};

constexpr ReaderName kReaderNames[] = {
    {"json", "libVynJsonProfilingReader.so", OutputKind::kJsonDocument},
    {"summary", "libVynProfilingReader.so", OutputKind::kCsvListing},
};

template <typename Predicate>
const ReaderName* findReader(Predicate predicate) {
  const auto* found = std::find_if(std::begin(kReaderNames), std::end(kReaderNames), predicate);
  return found == std::end(kReaderNames) ? nullptr : found;
}

// A path to one of the readers with a short name writes what that reader writes.
OutputKind outputOfLibrary(const std::string& path) {
  const std::string file = std::filesystem::path(path).filename();
  const ReaderName* reader =
      findReader([&file](const ReaderName& entry) { return entry.library == file; });
  return reader == nullptr ? OutputKind::kUnknown : reader->output;
}

}  // namespace

std::optional<ReaderChoice> chooseReader(const std::string& text) {
  if (text.find('/') != std::string::npos) {
    return ReaderChoice{text, outputOfLibrary(text)};
  }
  const ReaderName* reader =
      findReader([&text](const ReaderName& entry) { return entry.name == text; });
  if (reader == nullptr) {
    return std::nullopt;
  }
  return ReaderChoice{reader->library, reader->output};
}

std::string readerNames() {
  std::string names;
  for (const ReaderName& reader : kReaderNames) {
    names += (names.empty() ? "" : ", ") + std::string(reader.name);
  }
  return names;
}

std::vector<std::string> readerNameList() {
  std::vector<std::string> names;
  for (const ReaderName& reader : kReaderNames) {
    names.emplace_back(reader.name);
  }
  return names;
}

}  // namespace vyn::host
