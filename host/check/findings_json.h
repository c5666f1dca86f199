#pragma once

#include <rapidjson/ostreamwrapper.h>
#include <rapidjson/prettywriter.h>

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

  std::ostream& m_out;
  rapidjson::OStreamWrapper m_stream;
  rapidjson::PrettyWriter<rapidjson::OStreamWrapper, rapidjson::UTF8<>, rapidjson::UTF8<>,
                          profiling::ThrowingAllocator>
      m_writer;
};

}  // namespace vyn::host
