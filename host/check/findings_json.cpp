#include "host/check/findings_json.h"

#include <algorithm>

#include "base/utf8.h"

namespace vyn::host {
namespace {

using profiling::CheckCode;
using profiling::Finding;
using profiling::Findings;
using profiling::Severity;

constexpr int kSchemaVersion = 1;
constexpr unsigned kIndent = 2;  // blanks

const char* textOf(Severity severity) { return severity == Severity::kError ? "error" : "warning"; }

}  // namespace

FindingsJson::FindingsJson(std::ostream& out) : m_out(out) {
  m_writer.SetIndent(' ', kIndent);
  m_writer.StartObject();
  m_writer.Key("schema_version");
  m_writer.Int(kSchemaVersion);
  m_writer.Key("logs");
  m_writer.StartArray();
}

void FindingsJson::add(const Findings& findings, const std::string& log) {
  m_writer.StartObject();
  putText("log", log);
  putNumber("errors", findings.count(Severity::kError));
  putNumber("warnings", findings.count(Severity::kWarning));
  putNumber("chunks", findings.chunks);
  putNumber("messages", findings.messages);
  putNumber("sound_bytes", findings.soundBytes);
  m_writer.Key("findings");
  m_writer.StartArray();
  for (const Finding& finding : findings.kept()) {
    putFinding(finding);
  }
  m_writer.EndArray();
  m_writer.Key("codes");
  m_writer.StartArray();
  for (std::size_t code = 0; code < profiling::kCheckCodeCount; ++code) {
    putCount(static_cast<CheckCode>(code), findings);
  }
  m_writer.EndArray();
  m_writer.EndObject();
  passOn();
}

void FindingsJson::finish() {
  m_writer.EndArray();
  m_writer.EndObject();
  passOn();
  m_out << '\n';
}

void FindingsJson::passOn() {
  m_out.write(m_text.GetString(), static_cast<std::streamsize>(m_text.GetSize()));
  m_text.Clear();
}

void FindingsJson::putText(const char* key, const std::string& text) {
  const std::string valid = profiling::withoutInvalidUtf8(text);
  m_writer.Key(key);
  m_writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

void FindingsJson::putNumber(const char* key, std::uint64_t number) {
  m_writer.Key(key);
  m_writer.Uint64(number);
}

void FindingsJson::putFinding(const Finding& finding) {
  const profiling::CheckCodeEntry& entry = entryOf(finding.code);
  m_writer.StartObject();
  putText("code", entry.name);
  putText("severity", textOf(entry.severity));
  if (finding.chunk != 0) {
    putNumber("chunk_number", finding.chunk);
    putNumber("offset_bytes", finding.offset);
  }
  if (finding.message != 0) {
    putNumber("message_number", finding.message);
  }
  putText("meaning", entry.meaning);
  putText("found", finding.evidence.found);
  putText("expected", finding.evidence.expected);
  putText("remedy", entry.remedy);
  m_writer.EndObject();
}

void FindingsJson::putCount(CheckCode code, const Findings& findings) {
  const std::uint64_t count = findings.count(code);
  if (count == 0) {
    return;
  }
  m_writer.StartObject();
  putText("code", entryOf(code).name);
  putText("severity", textOf(entryOf(code).severity));
  putNumber("count", count);
  putNumber("shown", std::min(count, Findings::kMaxKept));
  m_writer.EndObject();
}

}  // namespace vyn::host
