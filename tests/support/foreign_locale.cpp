#include "support/foreign_locale.h"

#include <clocale>
#include <cstdlib>
#include <stdexcept>

#include "support/run_program.h"

namespace vyn::test {
namespace {

constexpr char kGerman[] = "de_DE.UTF-8";

class Grouping : public std::numpunct<char> {
 protected:
  char do_thousands_sep() const override { return '.'; }
  char do_decimal_point() const override { return ','; }
  std::string do_grouping() const override { return "\3"; }
};

}  // namespace

std::locale groupingLocale() { return {std::locale(), new Grouping}; }

GlobalGroupingLocale::GlobalGroupingLocale() : m_previous(std::locale::global(groupingLocale())) {}

GlobalGroupingLocale::~GlobalGroupingLocale() { std::locale::global(m_previous); }

GermanLocale::GermanLocale() {
  const ProgramResult made =
      runProgram({.words = {"localedef", "-i", "de_DE", "-f", "UTF-8", m_folder.path(kGerman)}});
  setenv("LOCPATH", m_folder.path("").c_str(), 1);
  if (made.exitStatus != 0 || std::setlocale(LC_ALL, kGerman) == nullptr) {
    throw std::runtime_error("no German locale: " + made.errors);
  }
}

GermanLocale::~GermanLocale() {
  std::setlocale(LC_ALL, "C");
  unsetenv("LOCPATH");
}

}  // namespace vyn::test
