#pragma once

#include <profile_log_generated.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "analysis/check_site.h"
#include "analysis/text_check.h"
#include "base/text_hash.h"

namespace vyn::profiling {

/// Checks the headers of a log. An equal header in a later chunk is no flaw: a writer may repeat
/// it.
class HeaderCheck {
 public:
  HeaderCheck(CheckSite& site, TextCheck& texts) : m_site(site), m_texts(texts) {}

  void check(const schema::LogHeader& header);

  bool hasHeader() const { return m_first.has_value(); }

 private:
  // A header's fields. Texts, which may be long, stand in it as their hash.
  using Fields = std::array<std::uint64_t, 9>;

  Fields fieldsOf(const schema::LogHeader& header) const;
  static Evidence differenceOf(const Fields& header, const Fields& first);

  CheckSite& m_site;
  TextCheck& m_texts;
  TextHash m_hash;
  std::optional<Fields> m_first;
};

}  // namespace vyn::profiling
