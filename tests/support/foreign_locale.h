#pragma once

#include <locale>

#include "support/temp_folder.h"

namespace vyn::test {

/// A locale that groups digits with points and marks decimals with a comma.
std::locale groupingLocale();

/// Makes that the global locale of C++ while it lives.
class GlobalGroupingLocale {
 public:
  GlobalGroupingLocale();
  ~GlobalGroupingLocale();
  GlobalGroupingLocale(const GlobalGroupingLocale&) = delete;
  GlobalGroupingLocale& operator=(const GlobalGroupingLocale&) = delete;

 private:
  std::locale m_previous;
};

/// A German locale, made by itself, as the process's locale of C while it lives.
class GermanLocale {
 public:
  GermanLocale();
  ~GermanLocale();
  GermanLocale(const GermanLocale&) = delete;
  GermanLocale& operator=(const GermanLocale&) = delete;

 private:
  TempFolder m_folder;
};

}  // namespace vyn::test
