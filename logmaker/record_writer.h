#pragma once

#include "logmaker/log_content.h"
#include "logmaker/output_file.h"

namespace vyn::logmaker {

/// Writes down what a log says, one JSON object a line: the header, then each message in the shape
/// that a reader's JSON document gives it. Made from the plain values, never from the log's bytes,
/// so that a document can be checked against it.
class RecordWriter {
 public:
  RecordWriter(OutputFile& output, const LogHeader& header);

  void write(const Message& message);

 private:
  OutputFile& m_output;
};

}  // namespace vyn::logmaker
