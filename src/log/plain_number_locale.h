#pragma once

#include <locale.h>  // NOLINT(modernize-deprecated-headers): POSIX declares uselocale here

namespace vyn::log {

/// While one lives, the thread's C conversions write numbers plainly (decimal point, no grouping),
/// whatever locale the host has set.
class PlainNumberLocale {
 public:
  // newlocale hands out the built-in locale for "C": nothing is allocated and nothing can fail.
  PlainNumberLocale() : m_previous(uselocale(newlocale(LC_ALL_MASK, "C", nullptr))) {}
  ~PlainNumberLocale() { uselocale(m_previous); }
  PlainNumberLocale(const PlainNumberLocale&) = delete;
  PlainNumberLocale& operator=(const PlainNumberLocale&) = delete;

 private:
  locale_t m_previous;
};

}  // namespace vyn::log
