#pragma once

#include <string>

#include "files/temp_file.h"
#include "host/input/log_file.h"
#include "host/output/output_destination.h"

namespace vyn::host {

/// Where a log's document goes.
struct DocumentPlace {
  files::Destination destination;
  files::TempFile::Existing existing;
  std::string unasked;  ///< the file's name when the user named none, who then is to be told it
};

/// The place that `name` leads to. Without a name it is standard output for a log from standard
/// input, else the log's own name with ".json", in the current directory: there a document of this
/// log is replaced, and where nothing is, nothing that comes meanwhile, unless the user has said
/// that whatever is there `isReplaced`. Throws FileError when something else is there, for logs of
/// other directories have the same name, and when nothing can be written there.
DocumentPlace findDocumentPlace(const std::string& name, bool isReplaced, const LogFile& log);

/// Says where the document went, once it is there, if the user named no place.
void reportUnasked(const DocumentPlace& place);

}  // namespace vyn::host
