#pragma once

#include <iostream>
#include <streambuf>

namespace vyn::fuzz {

/// While it lives, what goes to standard output is thrown away.
class QuietOutput {
 public:
  QuietOutput() : m_previous(std::cout.rdbuf(&m_nowhere)) {}
  ~QuietOutput() { std::cout.rdbuf(m_previous); }
  QuietOutput(const QuietOutput&) = delete;
  QuietOutput& operator=(const QuietOutput&) = delete;

 private:
  class Nowhere : public std::streambuf {
   protected:
    std::streamsize xsputn(const char* /*text*/, std::streamsize length) override { return length; }
    int overflow(int character) override { return character == traits_type::eof() ? 0 : character; }
  };

  Nowhere m_nowhere;
  std::streambuf* m_previous;
};

}  // namespace vyn::fuzz
