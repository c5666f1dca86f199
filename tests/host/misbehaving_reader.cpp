// A reader that fails in the way that its log's name tells.

#include <cstdio>
#include <fstream>
#include <iostream>
#include <new>
#include <stdexcept>

#include "vyn/profiling/reader_plugin.h"

namespace vyn::profiling {
namespace {

// Of this library's own making: its code is gone when the library is.
struct OwnError : std::exception {
  const char* what() const noexcept override { return "own error"; }
};

class MisbehavingReader : public ProfileLogReader {
 public:
  explicit MisbehavingReader(std::string behaviour) : m_behaviour(std::move(behaviour)) {}
  ~MisbehavingReader() override { std::ofstream("destroyed").close(); }

  bool throwsWhenDeleted() const { return m_behaviour == "throws_deleted"; }

  bool generateOutput(const std::string& outputFileName) override {
    throwIf("throws_writing");
    std::ofstream(outputFileName) << (m_behaviour == "stops_early" ? "{\n    \"mess" : "text");
    if (m_behaviour == "prints") std::cout << "written\n";
    if (m_behaviour == "fails_a_payload") {
      std::cout << "\n    12.3ms [ ERROR ] Invalid output fileName: [a\x1b.bin]\n";
    }
    if (m_behaviour == "shows_a_payload") {
      std::cout << "Graph 0 (Invalid output fileName: [a.bin])\nInvalid output fileName: [b]\n";
    }
    if (m_behaviour == "fails_to_write_loudly") std::puts("no room here");
    return m_behaviour != "fails_to_write" && m_behaviour != "fails_to_write_loudly";
  }
  std::string getHeaderDetails() override {
    throwIf("throws_header");
    return "header\n";
  }
  bool processNextMessage() override { return false; }
  bool readInputFile(bool /*writeObjectPayloads*/) override {
    if (m_behaviour == "bad_alloc") throw std::bad_alloc();
    if (m_behaviour == "length_error") throw std::length_error("too long");
    if (m_behaviour == "own_error") throw OwnError();
    throwIf("throws_reading");
    if (m_behaviour == "prints") std::cout << "read\n";
    if (m_behaviour == "refuses_loudly") {
      std::cout << "a notice\n     0.1ms [ ERROR ] it is \x1b[31mred\n\n" << std::flush;
    }
    return m_behaviour != "refuses" && m_behaviour != "refuses_loudly";
  }
  int isReaderValid() override {
    throwIf("throws_asked");
    return m_behaviour == "is_invalid" ? 0 : 1;
  }
  void printEvents(std::ostream& /*stream*/, std::vector<EventNode> /*events*/) override {}
  void writeEventsCsv(std::ostream& /*stream*/, std::vector<EventNode> /*events*/,
                      std::uint64_t /*timestamp*/, const std::string& /*message*/) override {}

 private:
  // What no handler for the standard library's exceptions catches.
  void throwIf(const std::string& behaviour) const {
    if (m_behaviour == behaviour) throw 42;
  }

  std::string m_behaviour;
};

}  // namespace

ProfileLogReader* createReader(const std::string& inputLogPath, VisibilityLevel /*level*/) {
  if (inputLogPath == "throws_made") throw 42;
  return inputLogPath == "none" ? nullptr : new MisbehavingReader(inputLogPath);
}

void deleteReader(ProfileLogReader* reader) {
  const bool throws = static_cast<MisbehavingReader*>(reader)->throwsWhenDeleted();
  delete reader;
  if (throws) throw 42;
}

}  // namespace vyn::profiling
