#include "input/enum_texts.h"

namespace vyn::profiling {

const char* methodText(schema::MethodType method) {
  // These two are read like any other method but have never had a text.
  if (method == schema::MethodType::LIBRARY_LOAD ||
      method == schema::MethodType::APPLY_BINARY_SECTION) {
    return "";
  }
  return schema::EnumNameMethodType(method);
}

const char* eventTypeText(schema::EventType type) { return schema::EnumNameEventType(type); }

const char* eventUnitText(schema::EventUnit unit) {
  // Unit 0 prints as nothing, unlike event type 0, which prints as NONE.
  return unit == schema::EventUnit::UNSPECIFIED ? "" : schema::EnumNameEventUnit(unit);
}

}  // namespace vyn::profiling
