#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vyn::profiling {

/// What can be wrong with a log. The order is that of the codes' names.
enum class CheckCode : std::uint8_t {
  kEndsInFirstLength,
  kImpossibleLength,
  kCutShort,
  kReadError,
  kForeignFormat,
  kOffsetOut,
  kBadLayout,
  kReachesOut,
  kUnendedText,
  kMissingField,
  kNestedTooDeep,
  kTooManyTables,
  kUnexplained,
  kNoHeader,
  kOtherHeader,
  kBytesBehind,
  kTextsNotRead,
  kUnknownMethod,
  kUnknownType,
  kUnknownUnit,
  kUnknownValueType,
  kNotANumber,
  kNotUtf8,
  kZeroByte,
  kNoValue,
  kPayloadOutside,
  kMoreThanParent,
  kStopBeforeStart,
  kTimeGoesBack,
  kSequenceGoesBack,
  kSequenceGap,
  kSequenceRepeat,
  kNoGraphName,
  kNoQueueWait,
  kSeveralQueueWaits,
};

inline constexpr std::size_t kCheckCodeCount =
    static_cast<std::size_t>(CheckCode::kSeveralQueueWaits) + 1;

/// With an error, a part of the log cannot be read. With a warning all of it can, but a figure that
/// is made of it may be missing or mislead.
enum class Severity : std::uint8_t { kError, kWarning };

struct CheckCodeEntry {
  const char* name;  ///< never given to anything else: "VYN103"
  Severity severity;
  const char* meaning;  ///< a clause: "the log ends inside a chunk"
  const char* remedy;   ///< what to do
};

/// All codes, in the order of the enumeration and of their names.
extern const std::array<CheckCodeEntry, kCheckCodeCount> kCheckCodes;

inline const CheckCodeEntry& entryOf(CheckCode code) {
  return kCheckCodes.at(static_cast<std::size_t>(code));
}

}  // namespace vyn::profiling
