#include "host/output/document_place.h"

#include <fcntl.h>
#include <rapidjson/document.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "files/file_descriptor.h"
#include "files/file_error.h"
#include "files/standard_streams.h"
#include "host/report_line.h"

namespace vyn::host {
namespace {

namespace fs = std::filesystem;

// How a document of a log with a header begins, up to the log's path.
constexpr std::string_view kBeginning =
    "{\n    \"metadata\": {\n        \"inputLogFileLocation\": \"";
constexpr std::size_t kLookedAt = 32768;  // bytes; more than a path can have, escaped

std::string beginningOf(const std::string& file) {
  const files::FileDescriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC));
  std::array<char, kLookedAt> bytes{};
  const ssize_t count = read(opened.get(), bytes.data(), bytes.size());
  return {bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0};
}

// The path of the log that the document is of. Empty when it tells none.
std::string logOfDocument(const std::string& file) {
  const std::string text = beginningOf(file);
  if (!text.starts_with(kBeginning)) {
    return "";
  }
  const std::size_t start = kBeginning.size() - 1;  // with its quotation mark
  rapidjson::Document path;
  path.Parse<rapidjson::kParseStopWhenDoneFlag>(text.data() + start, text.size() - start);
  return path.IsString() ? std::string(path.GetString(), path.GetStringLength()) : "";
}

files::TempFile::Existing checkDefaultOutput(const std::string& name, const LogFile& log) {
  struct stat found {};
  if (lstat(name.c_str(), &found) != 0) {
    return files::TempFile::Existing::kRefused;
  }
  const bool isFile = stat(name.c_str(), &found) == 0 && S_ISREG(found.st_mode);
  const std::string previous = isFile ? logOfDocument(name) : "";
  std::error_code error;  // for a pipe, too: another log may come through it next
  if (previous.empty() || !fs::equivalent(previous, log.path, error)) {
    throw files::FileError(name, files::explain(EEXIST));
  }
  return files::TempFile::Existing::kReplaced;
}

}  // namespace

DocumentPlace findDocumentPlace(const std::string& name, bool isReplaced, const LogFile& log) {
  if (!name.empty() || log.isStandardInput) {
    return {findDestination(name.empty() ? files::kStandardStreamPath : name, log),
            files::TempFile::Existing::kReplaced, ""};
  }
  const std::string file = fs::path(log.path).filename().string() + ".json";
  const auto existing =
      isReplaced ? files::TempFile::Existing::kReplaced : checkDefaultOutput(file, log);
  return {findDestination(file, log), existing, file};
}

void reportUnasked(const DocumentPlace& place) {
  if (!place.unasked.empty()) {
    reportLine("wrote " + place.unasked);
  }
}

}  // namespace vyn::host
