#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vyn::host {

/// What a reader's `generateOutput` writes to the file that it is given.
enum class OutputKind {
  kJsonDocument,  ///< one document, written anew; always to a file
  kCsvListing,    ///< lines after what the file holds; a file is optional
  kUnknown,       ///< a reader from elsewhere, treated like a listing
};

/// A reader that the command line named.
struct ReaderChoice {
  std::string library;  ///< with a slash: the path; else a file name to be looked for
  OutputKind output;
};

/// The reader that `text` means: one of the short names, or with a slash the path of a library.
/// None for any other text.
std::optional<ReaderChoice> chooseReader(const std::string& text);

/// The short names, for messages: "json, summary".
std::string readerNames();

/// The short names.
std::vector<std::string> readerNameList();

}  // namespace vyn::host
