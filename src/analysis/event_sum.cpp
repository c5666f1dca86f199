#include "analysis/event_sum.h"

#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>

#include "analysis/text_check.h"
#include "input/enum_texts.h"

namespace vyn::profiling {
namespace {

using schema::EventUnit;
using schema::EventValueType;

constexpr long double kRounding = 1e-6L;  // of the whole

bool addsUp(EventUnit unit) {
  return unit == EventUnit::MICROSEC || unit == EventUnit::BYTES || unit == EventUnit::CYCLES ||
         unit == EventUnit::COUNT;
}

bool isFloating(const schema::Event& event) {
  return event.valueType() == EventValueType::FLOAT || event.valueType() == EventValueType::DOUBLE;
}

std::optional<long double> finite(double value) {
  return std::isfinite(value) ? std::optional<long double>(value) : std::nullopt;
}

// None for an event without a number.
std::optional<long double> numberOf(const schema::Event& event) {
  switch (event.valueType()) {
    case EventValueType::INT64:
      return event.int64Value();
    case EventValueType::UINT64:
      return event.uint64Value();
    case EventValueType::FLOAT:
      return finite(static_cast<double>(event.floatValue()));
    case EventValueType::DOUBLE:
      return finite(event.doubleValue());
    default:
      return std::nullopt;
  }
}

bool isNumber(const schema::Event& event) {
  switch (event.valueType()) {
    case EventValueType::INT64:
    case EventValueType::UINT64:
      return true;
    default:
      return numberOf(event).has_value();
  }
}

std::string textOf(long double number, bool isIntegral) {
  constexpr int kDigitsOfWhole = 20;
  constexpr int kDigits = 9;
  std::array<char, 64> text{};
  const auto [end, problem] =
      std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general,
                    isIntegral ? kDigitsOfWhole : kDigits);
  return {text.data(), end};
}

}  // namespace

EventSum::EventSum(const schema::Event& whole)
    : m_event(whole), m_isAdded(addsUp(whole.unit()) && isNumber(whole)) {}

void EventSum::addNumber(const schema::Event& part) {
  if (part.valueType() == EventValueType::UINT64) {
    const std::uint64_t sum = m_unsignedParts + part.uint64Value();
    if (sum < m_unsignedParts) {
      m_otherParts += static_cast<Number>(m_unsignedParts);
      m_unsignedParts = part.uint64Value();
    } else {
      m_unsignedParts = sum;
    }
  } else if (const auto number = numberOf(part)) {
    m_hasFloating = m_hasFloating || isFloating(part);
    m_otherParts += *number;
  } else {
    return;
  }
  ++m_count;
}

bool EventSum::exceedsWhole() const {
  if (m_count == 0) {
    return false;
  }
  if (m_event.valueType() == EventValueType::UINT64 && m_otherParts == 0) {
    return m_unsignedParts > m_event.uint64Value();
  }
  const Number tolerance = isIntegral() ? 0 : kRounding * std::fabs(whole());
  return parts() > whole() + tolerance;
}

bool EventSum::isIntegral() const { return !m_hasFloating && !isFloating(m_event); }

EventSum::Number EventSum::whole() const { return numberOf(m_event).value_or(0); }

EventSum::Number EventSum::parts() const {
  return m_otherParts + static_cast<Number>(m_unsignedParts);
}

Evidence EventSum::describe() const {
  const std::string unit = eventUnitText(m_event.unit());
  return {quoted(m_event.identifier()) + " has " + textOf(whole(), isIntegral()) + " " + unit +
              ", its " + std::to_string(m_count) + (m_count == 1 ? " part has " : " parts have ") +
              textOf(parts(), isIntegral()),
          "no more than the event has; it is " + textOf(parts() - whole(), isIntegral()) + " more"};
}

}  // namespace vyn::profiling
