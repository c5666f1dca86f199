#include "analysis/header_check.h"

#include <algorithm>
#include <bit>
#include <string>

namespace vyn::profiling {
namespace {

// In the order of the fields.
constexpr std::array kFieldNames = {"timeScale",     "epochTime",     "timestamp",
                                    "version",       "version.major", "version.minor",
                                    "version.teeny", "netRunVersion", "backendVersion"};

std::string_view textOr(const flatbuffers::String* text) {
  return text == nullptr ? std::string_view() : text->string_view();
}

}  // namespace

void HeaderCheck::check(const schema::LogHeader& header) {
  m_texts.check(header.netRunVersion(), "netRunVersion");
  m_texts.check(header.backendVersion(), "backendVersion");
  const Fields fields = fieldsOf(header);
  if (!m_first) {
    m_first = fields;
  } else if (fields != *m_first) {
    m_site.report(CheckCode::kOtherHeader, &header, [&] { return differenceOf(fields, *m_first); });
  }
}

HeaderCheck::Fields HeaderCheck::fieldsOf(const schema::LogHeader& header) const {
  const schema::Version* version = header.version();
  const bool hasVersion = version != nullptr;
  return {std::bit_cast<std::uint32_t>(header.timeScale()),
          header.epochTime(),
          header.timestamp(),
          hasVersion ? std::uint64_t{1} : 0,
          hasVersion ? version->major() : 0,
          hasVersion ? version->minor() : 0,
          hasVersion ? version->teeny() : 0,
          m_hash(textOr(header.netRunVersion())),
          m_hash(textOr(header.backendVersion()))};
}

Evidence HeaderCheck::differenceOf(const Fields& header, const Fields& first) {
  const auto field =
      std::mismatch(header.begin(), header.end(), first.begin()).first - header.begin();
  return {std::string("another ") + kFieldNames.at(static_cast<std::size_t>(field)),
          "the one of the first header"};
}

}  // namespace vyn::profiling
