// Makes the paths on a fuzz target's command line absolute, for inputs are run in folders of their
// own, and a finding must be written all the same.

#include <filesystem>
#include <list>
#include <string>

namespace {

// `path`, absolute, behind `prefix`; a slash at the end stays.
std::string absolute(const std::string& prefix, const std::string& path) {
  return prefix + (std::filesystem::current_path() / path).string();
}

std::string withAbsolutePath(const std::string& argument) {
  if (!argument.starts_with('-')) {
    return absolute("", argument);
  }
  for (const std::string option : {"-artifact_prefix=", "-exact_artifact_path=", "-dict="}) {
    if (argument.starts_with(option)) {
      return absolute(option, argument.substr(option.size()));
    }
  }
  return argument;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int* argumentCount, char*** arguments) {
  static std::list<std::string> texts;  // as long as the process
  // The program's own name must stay as it is.
  for (int i = 1; i < *argumentCount; ++i) {
    (*arguments)[i] = texts.emplace_back(withAbsolutePath((*arguments)[i])).data();
  }
  return 0;
}
