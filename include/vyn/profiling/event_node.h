#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vyn::profiling {

/// Type of the value that an EventNode carries. In hexadecimal the digits above the last two give
/// the kind (0 signed, 1 unsigned, 2 floating point, 5 boolean, 6 text), the last two its bits.
enum class EventDataType : std::uint32_t {
  NONE = 0,  ///< no printable value
  INT_8 = 0x0008,
  INT_16 = 0x0016,
  INT_32 = 0x0032,
  INT_64 = 0x0064,
  UINT_8 = 0x0108,
  UINT_16 = 0x0116,
  UINT_32 = 0x0132,
  UINT_64 = 0x0164,
  FLOAT_32 = 0x0232,
  FLOAT_64 = 0x0264,
  BOOL_8 = 0x0508,
  STRING = 0x0608,
};

/// The 64-bit value word of an EventNode. Integers sit in the low bits, a 32-bit float in the low
/// 32 bits. A text is NUL-terminated and owned by the reader that decoded the event: it stays valid
/// until that reader is destroyed.
union EventValue {
  std::uint64_t uint64 = 0;
  std::int64_t int64;
  float float32;
  double float64;
  const char* text;
};

/// One decoded profiling event with its sub-events.
struct EventNode {
  std::uint32_t type = 0;  ///< what the event measures, as numbered in the log (100 INIT, 404 NODE)
  EventDataType dataType = EventDataType::NONE;  ///< how to read `value`
  EventValue value;
  std::vector<std::uint8_t> rawData;  ///< payload bytes of a raw-data event, else empty
  std::string identifier;             ///< the event's name, "null" when the log has none
  std::string secondaryName;          ///< of an OBJECT event, the file that its payload goes to
  std::uint32_t unit = 0;             ///< unit of the value, as numbered in the log (5 OBJECT)
  std::uint64_t extraValue = 0;
  std::uint64_t count = 1;  ///< events merged into this one; above 1 only in averages
  std::vector<EventNode> children;
};

}  // namespace vyn::profiling
