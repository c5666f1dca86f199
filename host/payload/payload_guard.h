#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "host/input/log_file.h"
#include "host/output/output_limit.h"
#include "host/payload/payload_folder.h"
#include "host/payload/payload_survey.h"

namespace vyn::host {

/// Where payloads may go.
enum class PayloadPlaces {
  kCurrentDirectory,  ///< it and the directories in it, through no symbolic link
  kAnywhere
};

/// Looks at the files that a log's payloads name, before a reader writes them, and after. The log
/// names them, and it may come from anywhere; the reader takes the names as they are.
class PayloadGuard {
 public:
  /// Throws FileError when a payload would go where none may go or cannot, when it would replace a
  /// file or be replaced by the output, or when all of them are too large. `output` is the output's
  /// file, if it is one.
  PayloadGuard(const LogFile& log, PayloadPlaces places, const OutputLimit& limit,
               const std::filesystem::path& output);

  /// Throws FileError when a payload has been written since that is not whole, or when none of a
  /// name has and none could be.
  void checkWritten() const;

  /// Throws FileError with the reason why the payload could not be written to the file `name`.
  [[noreturn]] void throwUnwritten(const std::string& name) const;

 private:
  void add(const PayloadName& payload);
  std::string checkedDirectory(const PayloadName& payload);
  void checkDirectory(const PayloadName& payload, const std::string& directory);
  void checkWritable(const PayloadName& payload, const std::string& directory);
  void checkFile(const PayloadName& payload, const std::string& directory,
                 const std::string& file) const;
  void checkExisting(const PayloadName& payload, const std::string& path) const;
  void checkOutput(const PayloadName& payload, const std::string& directory,
                   const std::string& file) const;
  void checkNumberedDirectory(const PayloadName& payload, const std::string& path) const;
  bool checkNew(const std::string& directory, const std::string& name) const;
  std::set<std::uint64_t> sizesOf(const std::string& directory, const std::string& name) const;
  [[noreturn]] void refuse(const PayloadName& payload, const std::string& reason) const;
  [[noreturn]] void refuseLeaving(const PayloadName& payload) const;
  void refuseLink(const PayloadName& payload, const std::string& link) const;

  using SizesByFile = std::map<std::string, std::set<std::uint64_t>>;

  const LogFile& m_log;
  PayloadPlaces m_places;
  std::filesystem::path m_output;                  // its directory without symbolic links
  std::set<std::string> m_checked;                 // directories that a payload may go through
  std::map<std::string, PayloadFolder> m_folders;  // as they were before, by directory
  std::map<std::string, SizesByFile> m_targets;    // of the payloads, by directory
};

}  // namespace vyn::host
