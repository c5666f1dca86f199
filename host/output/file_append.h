#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vyn::host {

/// Adds `text` to the end of the file at `path`, in a line of its own; a missing file is made. The
/// file stays what it is to all who have it open or know it by another name. Runs that add to it at
/// once take turns; one that another program keeps waiting says so, and gives up after half a
/// minute. `name` is what messages call the file. Signals wait meanwhile. Throws FileError; the
/// file then is as it was, if the file system lets its end be cut.
void appendToFile(const std::filesystem::path& path, const std::string& name,
                  std::string_view text);

}  // namespace vyn::host
