#pragma once

#include <sstream>
#include <string>
#include <vector>

namespace vyn::test {

/// A stream buffer that keeps what came between one flush and the next.
class FlushRecorder : public std::stringbuf {
 public:
  const std::vector<std::string>& flushed() const { return m_flushed; }
  std::string unflushed() const { return str(); }

 protected:
  int sync() override {
    m_flushed.push_back(str());
    str("");
    return 0;
  }

 private:
  std::vector<std::string> m_flushed;
};

}  // namespace vyn::test
