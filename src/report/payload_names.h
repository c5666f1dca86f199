#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>

#include "base/text_hash.h"

namespace vyn::profiling {

/// Finds names for payload files at which nothing stands yet.
class PayloadNames {
 public:
  /// As long as one lives, searches go on where the last one for the same file ended. Scopes may
  /// lie within each other; with the outermost all that was remembered is forgotten, for files may
  /// be removed then, and the current folder may become another one.
  class Scope {
   public:
    explicit Scope(PayloadNames& names) : m_names(names) { ++m_names.m_scopes; }
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    PayloadNames& m_names;
  };

  /// The name itself, or else the first free one with a number, from 1 on, before its extension.
  /// The extension starts at the last dot, even at one in the name of a directory. A name is free
  /// when no file can be opened for reading under it; a pipe or a device is never opened and never
  /// free.
  std::string freeName(const std::string& name);

 private:
  // A file, however it is spelled: "x", "./x" and "d/../x" are one. The folder is the one before
  // the part of the name that the number goes into.
  struct Place {
    dev_t device;
    ino_t folder;
    std::string rest;

    bool operator==(const Place&) const = default;
  };

  struct PlaceHash {
    TextHash hash;

    std::size_t operator()(const Place& place) const;
  };

  static bool findPlace(const std::string& name, Place& place);

  // Thousands of payloads may have one name, and the names before the number are taken.
  std::unordered_map<Place, std::uint64_t, PlaceHash> m_nextNumbers;
  int m_scopes = 0;
};

}  // namespace vyn::profiling
