#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/check_site.h"

namespace vyn::profiling {

/// A text of a log for a message: in quotes, and cut when it is long.
std::string quoted(const flatbuffers::String* text);

/// Looks at the texts of a log. Texts may be shared by millions of events and may overlap, so what
/// was found in a text is remembered, and there is a bound on how many bytes are looked at for each
/// chunk; texts beyond it are counted.
class TextCheck {
 public:
  explicit TextCheck(CheckSite& site) : m_site(site) {}

  void enterChunk(std::size_t size);

  /// Reports texts that were not looked at. To be called at the end of each chunk.
  void leaveChunk();

  /// Reports what is wrong with the text, which may be absent. `field` names it.
  void check(const flatbuffers::String* text, const char* field) {
    if (text != nullptr) {
      checkPresent(*text, field);
    }
  }

  /// True when the text, as the name of a file, leads out of the folder.
  bool leadsOut(const flatbuffers::String& text) { return traitsOf(text).leadsOut; }

 private:
  struct Traits {
    bool isNoUtf8 = false;
    bool hasZeroByte = false;
    bool leadsOut = false;
  };
  // A text that was looked at, by its place.
  struct Known {
    std::uint64_t chunk = 0;
    std::uint32_t position = 0;
    Traits traits;
  };
  // 1 MB: enough for the names of any network, which a writer may write once and share.
  static constexpr std::size_t kKnownBits = 16;

  void checkPresent(const flatbuffers::String& text, const char* field);
  Known& slotOf(std::uint32_t position);
  bool allows(std::size_t size);
  static Traits lookAt(const flatbuffers::String& text);
  Traits traitsOf(const flatbuffers::String& text);
  void report(const flatbuffers::String& text, const char* field, const Traits& traits);

  CheckSite& m_site;
  std::vector<Known> m_known = std::vector<Known>(std::size_t{1} << kKnownBits);
  std::uint64_t m_budget = 0;   // bytes
  std::uint64_t m_skipped = 0;  // texts of the chunk
};

}  // namespace vyn::profiling
