#include "report/event_text.h"

#include <profile_log_generated.h>

#include <array>
#include <bit>
#include <charconv>

#include "base/copied_text.h"

namespace vyn::profiling {
namespace {

struct UnitTexts {
  const char* name;
  const char* suffix;
};

// BACKEND and every unknown unit count as microseconds on purpose. The suffix of NONE leaves a
// console line with a trailing blank.
UnitTexts unitTexts(std::uint32_t unit) {
  switch (static_cast<schema::EventUnit>(unit)) {
    case schema::EventUnit::BYTES:
      return {"BYTES", " bytes"};
    case schema::EventUnit::CYCLES:
      return {"CYCLES", " cycles"};
    case schema::EventUnit::COUNT:
      return {"COUNT", " count"};
    case schema::EventUnit::OBJECT:
      return {"OBJECT", " object"};
    case schema::EventUnit::NONE:
      return {"NONE", " "};
    default:
      return {"US", " us"};
  }
}

std::string fixedText(double number) {
  constexpr int kDecimals = 6;
  std::array<char, 330> text{};  // the longest double has 309 digits before the point
  const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                 std::chars_format::fixed, kDecimals);
  return {text.data(), end.ptr};
}

// The low bits of the value word as a number of their own width and sign.
template <typename Integer>
std::string integerText(std::uint64_t bits) {
  return std::to_string(static_cast<Integer>(bits));
}

}  // namespace

std::string formatEventValue(EventDataType dataType, EventValue value) {
  const std::uint64_t bits = value.uint64;
  switch (dataType) {
    case EventDataType::INT_8:
      return integerText<std::int8_t>(bits);
    case EventDataType::INT_16:
      return integerText<std::int16_t>(bits);
    case EventDataType::INT_32:
      return integerText<std::int32_t>(bits);
    case EventDataType::INT_64:
      return integerText<std::int64_t>(bits);
    case EventDataType::UINT_8:
    case EventDataType::BOOL_8:  // a number, never true or false
      return integerText<std::uint8_t>(bits);
    case EventDataType::UINT_16:
      return integerText<std::uint16_t>(bits);
    case EventDataType::UINT_32:
      return integerText<std::uint32_t>(bits);
    case EventDataType::UINT_64:
      return integerText<std::uint64_t>(bits);
    case EventDataType::FLOAT_32:
      return fixedText(static_cast<double>(std::bit_cast<float>(static_cast<std::uint32_t>(bits))));
    case EventDataType::FLOAT_64:
      return fixedText(std::bit_cast<double>(bits));
    case EventDataType::STRING:
      return copiedText(value.text);
    default:
      return {};
  }
}

const char* unitToString(std::uint32_t unit) { return unitTexts(unit).name; }

const char* unitToSuffix(std::uint32_t unit) { return unitTexts(unit).suffix; }

}  // namespace vyn::profiling
