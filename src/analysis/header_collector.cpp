#include "analysis/header_collector.h"

#include <bit>

#include "analysis/kept_text.h"

namespace vyn::profiling {
namespace {

constexpr std::array<const char*, 6> kFields = {"timeScale", "epochTime",     "timestamp",
                                                "version",   "netRunVersion", "backendVersion"};

std::optional<KeptText> keptOrNone(const flatbuffers::String* text) {
  return text != nullptr ? std::optional(keepText(text->string_view())) : std::nullopt;
}

HeaderFacts factsOf(const schema::LogHeader& header) {
  HeaderFacts facts{.timeScale = header.timeScale(),
                    .epochTime = header.epochTime(),
                    .timestamp = header.timestamp(),
                    .version = std::nullopt,
                    .netRunVersion = keptOrNone(header.netRunVersion()),
                    .backendVersion = keptOrNone(header.backendVersion())};
  if (const schema::Version* version = header.version()) {
    facts.version = {version->major(), version->minor(), version->teeny(), version->versionFlag()};
  }
  return facts;
}

}  // namespace

void HeaderCollector::add(const schema::LogHeader& header) {
  const Identity identity = identityOf(header);
  if (++m_count == 1) {
    m_first = factsOf(header);
    m_identity = identity;
  } else {
    noteDifferences(identity);
  }
}

HeaderCollector::Identity HeaderCollector::identityOf(const schema::LogHeader& header) const {
  const auto hash = [&](const flatbuffers::String* text) {
    return text != nullptr ? std::optional(std::uint64_t{m_hash(text->string_view())})
                           : std::nullopt;
  };
  Identity identity{.numbers = {std::bit_cast<std::uint32_t>(header.timeScale()),
                                header.epochTime(), header.timestamp()},
                    .version = std::nullopt,
                    .texts = {hash(header.netRunVersion()), hash(header.backendVersion())}};
  if (const schema::Version* version = header.version()) {
    identity.version = {version->major(), version->minor(), version->teeny(),
                        version->versionFlag()};
  }
  return identity;
}

void HeaderCollector::noteDifferences(const Identity& other) {
  const std::array<bool, 6> differs = {
      other.numbers[0] != m_identity.numbers[0], other.numbers[1] != m_identity.numbers[1],
      other.numbers[2] != m_identity.numbers[2], other.version != m_identity.version,
      other.texts[0] != m_identity.texts[0],     other.texts[1] != m_identity.texts[1]};
  for (std::size_t i = 0; i < differs.size(); ++i) {
    m_differs[i] |= differs[i];
  }
}

void HeaderCollector::report(LogFacts& facts) const {
  facts.headers = m_count;
  facts.header = m_first;
  for (std::size_t i = 0; i < kFields.size(); ++i) {
    if (m_differs[i]) {
      facts.differingHeaders.emplace_back(kFields[i]);
    }
  }
}

}  // namespace vyn::profiling
