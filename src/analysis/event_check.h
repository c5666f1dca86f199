#pragma once

#include <profile_log_generated.h>

#include "analysis/check_site.h"
#include "analysis/text_check.h"

namespace vyn::profiling {

/// Checks the events of a message, with all that is below them.
class EventCheck {
 public:
  EventCheck(CheckSite& site, TextCheck& texts) : m_site(site), m_texts(texts) {}

  void check(const schema::Message& message);

 private:
  void checkEvent(const schema::Event& event);
  void checkType(const schema::Event& event);
  void checkUnit(const schema::Event& event, schema::EventUnit unit);
  void reportUnknown(CheckCode code, const schema::Event& event, const char* what,
                     std::uint32_t number);
  void checkTexts(const schema::Event& event);
  void checkValue(const schema::Event& event);
  void checkNumber(const schema::Event& event, double value);
  void checkPresent(const schema::Event& event, const void* value, const char* field);
  void checkPayloadName(const schema::Event& event);
  void checkSubEvents(const schema::Event& event);
  void checkQueueWaits(const schema::Message& message);

  CheckSite& m_site;
  TextCheck& m_texts;
};

}  // namespace vyn::profiling
