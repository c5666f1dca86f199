#include "analysis/event_tally.h"

#include <algorithm>

#include "base/saturating.h"

namespace vyn::profiling {
namespace {

bool isPayload(const schema::Event& event, schema::EventUnit unit) {
  return unit == schema::EventUnit::OBJECT &&
         event.valueType() == schema::EventValueType::RAW_DATA && event.rawData() != nullptr;
}

}  // namespace

inline void EventTally::addIdentifier(const std::optional<std::uint64_t>& identity) {
  if (identity) {
    m_identifiers.add(*identity);
  } else {
    m_identifiers.addUnknown();
  }
}

void EventTally::add(const schema::Event& event, std::uint32_t depth, TextIdentities& identities) {
  const schema::EventUnit unit = event.unit();
  ++m_count;
  m_greatestDepth = std::max(m_greatestDepth, depth);
  m_types.add(static_cast<std::uint32_t>(event.type()));
  m_units.add(static_cast<std::uint32_t>(unit));
  m_valueTypes.add(static_cast<std::uint32_t>(event.valueType()));
  if (const flatbuffers::String* identifier = event.identifier()) {
    addIdentifier(identities.of(*identifier));
  }
  if (isPayload(event, unit)) {
    ++m_payloads.count;
    m_payloads.bytes = saturatingSum(m_payloads.bytes, event.rawData()->size());
  }
}

EventFacts EventTally::events() const {
  return {.count = m_count,
          .greatestDepth = m_greatestDepth,
          .types = m_types.counts(),
          .units = m_units.counts(),
          .valueTypes = m_valueTypes.counts(),
          .identifiers = m_identifiers.count(),
          .mayHaveMoreIdentifiers = m_identifiers.mayHaveMore()};
}

}  // namespace vyn::profiling
