#pragma once

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <ostream>
#include <string>

#include "analysis/findings.h"
#include "json/throwing_allocator.h"

namespace vyn::host {

/// Writes the document of docs/check.schema.json, log by log. The stream must outlive it.
class FindingsJson {
 public:
  explicit FindingsJson(std::ostream& out);

  void add(const profiling::Findings& findings, const std::string& log);

  /// To be called once, behind the last log.
  void finish();

 private:
  void putText(const char* key, const std::string& text);
  void putNumber(const char* key, std::uint64_t number);
  void putFinding(const profiling::Finding& finding);
  void putCount(profiling::CheckCode code, const profiling::Findings& findings);

  void passOn();

  using Text = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, profiling::ThrowingAllocator>;

  std::ostream& m_out;
  Text m_text;  // not yet passed on: a writer to the stream would hide why the stream failed
  rapidjson::PrettyWriter<Text, rapidjson::UTF8<>, rapidjson::UTF8<>, profiling::ThrowingAllocator>
      m_writer{m_text};
};

}  // namespace vyn::host
