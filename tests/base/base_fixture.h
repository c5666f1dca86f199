#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "support/captured_output.h"
#include "support/open_reader.h"

namespace vyn::test {

/// Reads logs of messages with the base reader.
class BaseReader : public testing::Test {
 protected:
  std::unique_ptr<OpenReader> read(std::initializer_list<std::string> messages, int level = 127) {
    auto reader =
        std::make_unique<OpenReader>(m_folder.add("run.log", logOf({chunkOf(messages)})), level);
    m_printed = printedBy([&] { EXPECT_TRUE(reader->readInputFile(false)); });
    return reader;
  }

  TempFolder m_folder;
  std::string m_printed;  // by the last read
};

}  // namespace vyn::test
