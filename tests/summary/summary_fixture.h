#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "support/captured_output.h"
#include "support/log_message.h"
#include "support/open_reader.h"

namespace vyn::test {

/// Reads logs of messages with the summary reader.
class SummaryReaderTest : public testing::Test {
 protected:
  std::unique_ptr<OpenReader> read(const std::vector<Message>& messages, int visibility = 127) {
    auto reader =
        std::make_unique<OpenReader>(m_folder.add("run.log", logWith(messages)), visibility);
    m_printed = printedBy([&] { EXPECT_TRUE(reader->readInputFile(false)); });
    return reader;
  }

  TempFolder m_folder;
  std::string m_printed;  // by the last read
};

}  // namespace vyn::test
