#pragma once

#include <flatbuffers/flatbuffers.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "analysis/check_site.h"

namespace vyn::profiling {

/// A text of a log for a message: in quotes, and cut when it is long.
std::string quoted(const flatbuffers::String* text);

/// Looks at the texts of a log. Texts may be shared by thousands of events and may overlap, so
/// there is a bound on how many bytes are looked at for each chunk; texts beyond it are counted.
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

  /// True when that many bytes of a text may be looked at; otherwise the text counts as one that
  /// was not.
  bool allows(std::size_t size);

 private:
  struct Flaws {
    bool isNoUtf8 = false;
    bool hasZeroByte = false;
  };
  // A long text that was looked at, by its place.
  struct Known {
    std::uint64_t chunk = 0;
    const void* text = nullptr;
    Flaws flaws;
  };
  static constexpr std::size_t kKnownTexts = 1024;

  void checkPresent(const flatbuffers::String& text, const char* field);
  static Flaws lookAt(std::string_view text);
  Flaws flawsOf(const flatbuffers::String& text);
  void report(const flatbuffers::String& text, const char* field, const Flaws& flaws);

  CheckSite& m_site;
  std::array<Known, kKnownTexts> m_known{};
  std::uint64_t m_budget = 0;   // bytes
  std::uint64_t m_skipped = 0;  // texts of the chunk
};

}  // namespace vyn::profiling
