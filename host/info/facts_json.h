#pragma once

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <ostream>
#include <string>

#include "analysis/log_facts.h"
#include "json/throwing_allocator.h"

namespace vyn::host {

/// Writes the facts of logs for programs: one JSON document, whose form is docs/info.schema.json.
class FactsDocument {
 public:
  using Text = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, profiling::ThrowingAllocator>;
  using Writer = rapidjson::PrettyWriter<Text, rapidjson::UTF8<>, rapidjson::UTF8<>,
                                         profiling::ThrowingAllocator>;

  /// The stream must outlive the document.
  explicit FactsDocument(std::ostream& out);

  void add(const std::string& logName, const profiling::LogFacts& facts);

  /// To be called behind the last log: ends the document.
  void finish();

 private:
  void passOn();

  std::ostream& m_out;
  Text m_text;
  Writer m_writer{m_text};
};

}  // namespace vyn::host
