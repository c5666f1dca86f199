#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "input/text_hash.h"

namespace vyn::profiling {

/// Finds names for payload files at which nothing stands yet.
class PayloadNames {
 public:
  /// The name itself, or else the first free one with a number, from 1 on, before its extension.
  /// The extension starts at the last dot, even at one in the name of a directory. A name is free
  /// when no file can be opened for reading under it; a pipe or a device is never opened and never
  /// free.
  std::string freeName(const std::string& name);

  /// Forgets where earlier searches got to: files may have been removed, or the current folder may
  /// be another one.
  void forget() { m_nextNumbers.clear(); }

 private:
  // Thousands of payloads may have one name: each search goes on where the last one ended, for the
  // names before that are taken.
  std::unordered_map<std::string, std::uint64_t, TextHash> m_nextNumbers;
};

}  // namespace vyn::profiling
