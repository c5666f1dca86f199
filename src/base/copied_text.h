#pragma once

#include <stdexcept>
#include <string>

namespace vyn {

/// Copies a NUL-terminated text. A null pointer is an error of the caller and throws
/// std::logic_error, whatever the standard library at hand would do with it.
inline std::string copiedText(const char* text) {
  if (text == nullptr) {
    throw std::logic_error("basic_string::_M_construct null not valid");
  }
  return text;
}

}  // namespace vyn
