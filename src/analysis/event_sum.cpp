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

std::string textOf(long double number, bool isWhole) {
  constexpr int kDigitsOfWhole = 20;
  constexpr int kDigits = 9;
  std::array<char, 64> text{};
  const auto [end, problem] =
      std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general,
                    isWhole ? kDigitsOfWhole : kDigits);
  return {text.data(), end};
}

}  // namespace

EventSum::EventSum(const schema::Event& whole) : m_event(whole) {
  if (!addsUp(whole.unit())) {
    return;
  }
  if (const auto number = numberOf(whole)) {
    m_isAdded = true;
    m_isWhole = !isFloating(whole);
    m_whole = *number;
  }
}

void EventSum::add(const schema::Event& part) {
  if (!m_isAdded || part.unit() != m_event.unit()) {
    return;
  }
  if (const auto number = numberOf(part)) {
    m_isWhole = m_isWhole && !isFloating(part);
    m_parts += *number;
    ++m_count;
  }
}

bool EventSum::exceedsWhole() const {
  const Number tolerance = m_isWhole ? 0 : kRounding * std::fabs(m_whole);
  return m_count > 0 && m_parts > m_whole + tolerance;
}

Evidence EventSum::describe() const {
  const std::string unit = eventUnitText(m_event.unit());
  return {quoted(m_event.identifier()) + " has " + textOf(m_whole, m_isWhole) + " " + unit +
              ", its " + std::to_string(m_count) + (m_count == 1 ? " part " : " parts ") +
              textOf(m_parts, m_isWhole),
          "no more than the event has; it is " + textOf(m_parts - m_whole, m_isWhole) + " more"};
}

}  // namespace vyn::profiling
