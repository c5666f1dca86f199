#include "host/payload/payload_guard.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <system_error>

#include "files/file_error.h"
#include "files/temp_file.h"
#include "host/output/document_check.h"
#include "host/output/output_destination.h"
#include "host/report_line.h"

namespace vyn::host {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestNumber = 21;  // bytes of an underscore and a number

constexpr char kOrAnywhere[] = "; add --payloads-anywhere if you trust the log";

// "." for the current directory, and without what does not matter, so that equal ones are the same.
std::string joined(const std::string& directory, const std::string& name) {
  return directory == "." ? name : directory + (directory.ends_with('/') ? "" : "/") + name;
}

std::string followed(const std::string& directory) {
  std::error_code error;
  const fs::path path = fs::canonical(directory, error);
  return error ? directory : path.string();
}

// Readers number a name before its last dot, wherever that is.
bool numbersItsDirectory(const std::string& name) {
  const std::size_t dot = name.rfind('.');
  const std::size_t slash = name.rfind('/');
  return dot != std::string::npos && slash != std::string::npos && dot < slash;
}

bool mayBe(const std::string& path, int access) {
  return faccessat(AT_FDCWD, path.c_str(), access, AT_EACCESS) == 0;
}

}  // namespace

PayloadGuard::PayloadGuard(const LogFile& log, PayloadPlaces places, const OutputLimit& limit,
                           const fs::path& output)
    : m_log(log), m_places(places) {
  if (!log.canBeReadAgain()) {
    throw files::FileError(
        log.name,
        "the names of its payloads cannot be looked at before it is read, for it is no "
        "file; write it to a file, or read it without --payloads");
  }
  if (!output.empty()) {
    m_output = joined(followed(files::directoryOf(output)), output.filename());
  }
  const PayloadSurvey survey = surveyPayloads(log);
  for (const PayloadName& payload : survey.names) {
    add(payload);
  }
  limit.check(survey.bytes, "the payloads of " + log.name);
}

void PayloadGuard::add(const PayloadName& payload) {
  if (payload.name.size() >= PATH_MAX) {
    refuse(payload, "has a name that is too long");
  }
  const std::string directory = checkedDirectory(payload);
  const std::string file = payload.name.substr(payload.name.rfind('/') + 1);
  const auto [target, isNew] = m_targets[directory].try_emplace(file);
  target->second.insert(payload.sizes.begin(), payload.sizes.end());
  if (isNew) {
    checkFile(payload, directory, file);
  }
  if (numbersItsDirectory(payload.name)) {
    checkNumberedDirectory(payload, joined(directory, file));
  }
}

// The directory of the name, in its shortest form, when files may be made in it.
std::string PayloadGuard::checkedDirectory(const PayloadName& payload) {
  const std::string& name = payload.name;
  const bool leaves = name.starts_with('/') || name == ".." || name.ends_with("/..");
  if (leaves && m_places != PayloadPlaces::kAnywhere) {
    refuseLeaving(payload);
  }
  std::string directory = name.starts_with('/') ? "/" : ".";
  std::size_t start = 0;
  for (std::size_t end = name.find('/'); end != std::string::npos; end = name.find('/', start)) {
    const std::string part = name.substr(start, end - start);
    start = end + 1;
    if (part == ".." && m_places != PayloadPlaces::kAnywhere) {
      refuseLeaving(payload);
    }
    if (!part.empty() && part != ".") {
      directory = joined(directory, part);
      checkDirectory(payload, directory);
    }
  }
  checkWritable(payload, directory);
  return directory;
}

// Each directory is looked at once, however many payloads it is to take.
void PayloadGuard::checkWritable(const PayloadName& payload, const std::string& directory) {
  if (m_folders.count(directory) != 0) {
    return;
  }
  if (!mayBe(directory, R_OK | W_OK | X_OK)) {
    refuse(payload, "cannot be written: " + directory + ": " + files::explain(errno));
  }
  m_folders.try_emplace(directory, directory);
}

void PayloadGuard::checkDirectory(const PayloadName& payload, const std::string& directory) {
  if (!m_checked.insert(directory).second) {
    return;
  }
  struct stat found {};
  if (lstat(directory.c_str(), &found) == 0 && S_ISLNK(found.st_mode)) {
    refuseLink(payload, directory);
  }
  if (stat(directory.c_str(), &found) != 0) {
    refuse(payload, "cannot be written: " + shortened(directory) + ": " + files::explain(errno));
  }
  if (!S_ISDIR(found.st_mode)) {
    refuse(payload, "cannot be written: " + directory + ": " + files::explain(ENOTDIR));
  }
}

void PayloadGuard::checkFile(const PayloadName& payload, const std::string& directory,
                             const std::string& file) const {
  if (file.empty()) {
    refuse(payload, "names a directory, not a file");
  }
  const PayloadFolder& found = m_folders.at(directory);
  const bool isNumbered = payload.writes > 1 || found.has(file);
  if (file.size() + (isNumbered ? kLongestNumber : 0) > NAME_MAX) {
    refuse(payload, "has a name that is too long");
  }
  checkOutput(payload, directory, file);
  if (found.has(file)) {
    checkExisting(payload, joined(directory, file));
  }
  for (const std::string& form : found.numberedForms(file)) {
    checkExisting(payload, joined(directory, form));
  }
}

// What is there already is never written when it can be read: readers take the next number then.
void PayloadGuard::checkExisting(const PayloadName& payload, const std::string& path) const {
  struct stat found {};
  if (lstat(path.c_str(), &found) != 0) {
    return;
  }
  if (S_ISLNK(found.st_mode)) {
    refuseLink(payload, path);
  }
  if (stat(path.c_str(), &found) == 0 && !mayBe(path, R_OK)) {
    refuse(payload, "would replace " + path + ", which may not be read; move it away");
  }
}

void PayloadGuard::checkOutput(const PayloadName& payload, const std::string& directory,
                               const std::string& file) const {
  const std::string output = m_output.filename();
  if ((output == file || unnumbered(output) == file) &&
      fs::path(followed(directory)) == m_output.parent_path()) {
    refuse(payload, "has the name of the output; give another --output");
  }
}

// The second file of such a name goes to another directory, which nobody has made.
void PayloadGuard::checkNumberedDirectory(const PayloadName& payload,
                                          const std::string& path) const {
  if (m_places != PayloadPlaces::kAnywhere && (payload.writes > 1 || mayBe(path, F_OK))) {
    refuse(
        payload,
        std::string("would be numbered in the name of its directory, for that has the last dot") +
            kOrAnywhere);
  }
}

void PayloadGuard::checkWritten() const {
  for (const auto& [directory, targets] : m_targets) {
    const PayloadFolder& before = m_folders.at(directory);
    const PayloadFolder now(directory);
    std::size_t written = 0;
    for (const std::string& name : now.names()) {
      if (!before.has(name) && checkNew(directory, name)) {
        ++written;
      }
    }
    if (written < targets.size()) {
      // A name without a file may be of an event that the reader leaves out.
      const files::TempFile probe(directory, kProgramName, directory);
      probeGrowth(probe.file());
    }
  }
}

// The name may come from anywhere, so only places that payloads may go to are tried.
void PayloadGuard::throwUnwritten(const std::string& name) const {
  for (const auto& [directory, targets] : m_targets) {
    const files::TempFile probe(directory, kProgramName, name);
    probeGrowth(probe.file());
  }
  throw files::FileError(
      name, "the payload could not be written; look what has this name, and check the disk");
}

// False when it is no payload.
bool PayloadGuard::checkNew(const std::string& directory, const std::string& name) const {
  const std::set<std::uint64_t> sizes = sizesOf(directory, name);
  const std::string path = joined(directory, name);
  struct stat found {};
  if (sizes.empty() || lstat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) {
    return false;
  }
  const auto size = static_cast<std::uint64_t>(found.st_size);
  if (size == *sizes.rbegin()) {
    return true;
  }
  const files::FileDescriptor file(open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC));
  if (file.isOpen()) {
    probeGrowth({file.get(), path});
  }
  if (sizes.count(size) == 0) {
    throw files::FileError(path, "the payload was not written whole; check the disk and try again");
  }
  return true;
}

// Of the payloads that may have gone to a file of that name; the name may be a numbered form.
std::set<std::uint64_t> PayloadGuard::sizesOf(const std::string& directory,
                                              const std::string& name) const {
  const auto& targets = m_targets.at(directory);
  std::set<std::uint64_t> sizes;
  for (const std::string& file : {name, unnumbered(name)}) {
    if (const auto target = targets.find(file); target != targets.end()) {
      sizes.insert(target->second.begin(), target->second.end());
    }
  }
  return sizes;
}

void PayloadGuard::refuseLeaving(const PayloadName& payload) const {
  refuse(payload, std::string("would leave the current directory") + kOrAnywhere);
}

void PayloadGuard::refuseLink(const PayloadName& payload, const std::string& link) const {
  if (m_places != PayloadPlaces::kAnywhere) {
    refuse(payload, "would go through the symbolic link " + link + kOrAnywhere);
  }
}

void PayloadGuard::refuse(const PayloadName& payload, const std::string& reason) const {
  throw files::FileError(m_log.name, "the payload of event \"" + payload.event + "\", named \"" +
                                         shortened(payload.name) + "\", " + reason);
}

}  // namespace vyn::host
