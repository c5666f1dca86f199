#include "analysis/event_check.h"

#include <cmath>
#include <string>

#include "analysis/event_sum.h"
#include "input/enum_texts.h"

namespace vyn::profiling {
namespace {

std::string textOfNumber(double value) {
  return std::isnan(value) ? "NaN" : value > 0 ? "infinity" : "minus infinity";
}

std::uint64_t countQueueWaits(const flatbuffers::Vector<flatbuffers::Offset<schema::Event>>& events,
                              bool isOutermost) {
  std::uint64_t count = 0;
  for (const schema::Event* event : events) {
    count += event->type() == schema::EventType::EXECUTE_QUEUE_WAIT ? 1 : 0;
    if (isOutermost && event->subEvents() != nullptr) {
      count += countQueueWaits(*event->subEvents(), false);
    }
  }
  return count;
}

}  // namespace

void EventCheck::check(const schema::Message& message) {
  if (message.profilingEvents() != nullptr) {
    for (const schema::Event* event : *message.profilingEvents()) {
      checkEvent(*event);
    }
  }
  if (message.method() == schema::MethodType::BACKEND_EXECUTE_ASYNC) {
    checkQueueWaits(message);
  }
}

// The verifier bounds how deep events nest and how many a chunk names.
void EventCheck::checkEvent(const schema::Event& event) {
  const schema::EventUnit unit = event.unit();
  checkType(event);
  checkUnit(event, unit);
  checkTexts(event);
  checkValue(event);
  if (unit == schema::EventUnit::OBJECT && event.secondaryName() != nullptr) {
    checkPayloadName(event);
  }
  if (event.subEvents() != nullptr) {
    checkSubEvents(event);
  }
}

void EventCheck::checkType(const schema::Event& event) {
  if (*eventTypeText(event.type()) == '\0') {
    reportUnknown(CheckCode::kUnknownType, event, "type", static_cast<std::uint32_t>(event.type()));
  }
}

void EventCheck::checkUnit(const schema::Event& event, schema::EventUnit unit) {
  if (unit != schema::EventUnit::UNSPECIFIED && *eventUnitText(unit) == '\0') {
    reportUnknown(CheckCode::kUnknownUnit, event, "unit", static_cast<std::uint32_t>(unit));
  }
}

void EventCheck::reportUnknown(CheckCode code, const schema::Event& event, const char* what,
                               std::uint32_t number) {
  m_site.report(code, &event, [&] {
    return Evidence{quoted(event.identifier()) + " has the " + what + " " + std::to_string(number),
                    "one of the schema"};
  });
}

void EventCheck::checkTexts(const schema::Event& event) {
  m_texts.check(event.identifier(), "the identifier");
  m_texts.check(event.secondaryName(), "the secondary name");
  m_texts.check(event.stringValue(), "the text value");
}

void EventCheck::checkValue(const schema::Event& event) {
  const schema::EventValueType type = event.valueType();
  switch (type) {
    case schema::EventValueType::NO_VALUE:
    case schema::EventValueType::INT64:
    case schema::EventValueType::UINT64:
      return;  // an absent number is 0, which builders leave out
    case schema::EventValueType::FLOAT:
      return checkNumber(event, static_cast<double>(event.floatValue()));
    case schema::EventValueType::DOUBLE:
      return checkNumber(event, event.doubleValue());
    case schema::EventValueType::STRING:
      return checkPresent(event, event.stringValue(), "stringValue");
    case schema::EventValueType::RAW_DATA:
      return checkPresent(event, event.rawData(), "rawData");
    default:
      return reportUnknown(CheckCode::kUnknownValueType, event, "value type",
                           static_cast<std::uint32_t>(type));
  }
}

void EventCheck::checkNumber(const schema::Event& event, double value) {
  if (!std::isfinite(value)) {
    m_site.report(CheckCode::kNotANumber, &event, [&] {
      return Evidence{quoted(event.identifier()) + " has the value " + textOfNumber(value),
                      "a finite number"};
    });
  }
}

void EventCheck::checkPresent(const schema::Event& event, const void* value, const char* field) {
  if (value == nullptr) {
    m_site.report(CheckCode::kNoValue, &event, [&] {
      return Evidence{quoted(event.identifier()) + " has the value type " +
                          schema::EnumNameEventValueType(event.valueType()),
                      std::string("the field ") + field};
    });
  }
}

void EventCheck::checkPayloadName(const schema::Event& event) {
  const flatbuffers::String& text = *event.secondaryName();
  if (m_texts.leadsOut(text)) {
    m_site.report(CheckCode::kPayloadOutside, &text, [&] {
      return Evidence{quoted(event.identifier()) + " goes to " + quoted(&text),
                      "a relative name without .."};
    });
  }
}

void EventCheck::checkSubEvents(const schema::Event& event) {
  EventSum sum(event);
  for (const schema::Event* subEvent : *event.subEvents()) {
    checkEvent(*subEvent);
    sum.add(*subEvent);
  }
  if (sum.exceedsWhole()) {
    m_site.report(CheckCode::kMoreThanParent, &event, [&] { return sum.describe(); });
  }
}

// As the summary looks for them: among the events and directly below these.
void EventCheck::checkQueueWaits(const schema::Message& message) {
  const std::uint64_t count =
      message.profilingEvents() == nullptr ? 0 : countQueueWaits(*message.profilingEvents(), true);
  const auto describe = [count] {
    return Evidence{std::to_string(count) + " events of the type EXECUTE_QUEUE_WAIT",
                    "one, among the events of the message or directly below one"};
  };
  if (count == 0) {
    m_site.report(CheckCode::kNoQueueWait, &message, describe);
  } else if (count > 1) {
    m_site.report(CheckCode::kSeveralQueueWaits, &message, describe);
  }
}

}  // namespace vyn::profiling
