#pragma once

#include <cstddef>
#include <ostream>
#include <string>

namespace vyn::profiling {

/// A heading of the console summary and the dashes of the rule below it. Widths that differ from
/// their heading's length are meant so; scripts compare summaries line by line.
struct Heading {
  const char* text;
  std::size_t ruleWidth;
};

inline constexpr Heading kStatisticsTitle{
    "Vyn Init/Prepare/Finalize/De-Init/Execute/Lib-Load Statistics:", 60};
inline constexpr Heading kInitHeading{"Init Stats:", 11};
inline constexpr Heading kComposeGraphsHeading{"Compose Graphs Stats:", 14};
inline constexpr Heading kFinalizeHeading{"Finalize Stats:", 15};
inline constexpr Heading kDeInitHeading{"De-Init Stats:", 14};
inline constexpr Heading kExecuteOverallHeading{"Execute Stats (Overall):", 24};
inline constexpr Heading kExecuteAverageHeading{"Execute Stats (Average):", 24};
inline constexpr Heading kExecuteMinHeading{"Execute Stats (Min):", 24};
inline constexpr Heading kExecuteMaxHeading{"Execute Stats (Max):", 24};
inline constexpr Heading kTotalInferenceTimeHeading{"Total Inference Time: ", 21};
inline constexpr Heading kLibLoadHeading{"Dynamic Lib Load Stats:", 24};
inline constexpr Heading kApplyBinarySectionAverageHeading{"ApplyBinarySection Stats (Average):",
                                                           35};
inline constexpr Heading kApplyBinarySectionMinHeading{"ApplyBinarySection Stats (Min):", 35};
inline constexpr Heading kApplyBinarySectionMaxHeading{"ApplyBinarySection Stats (Max):", 35};

inline void printHeading(std::ostream& stream, const Heading& heading) {
  stream << heading.text << std::endl << std::string(heading.ruleWidth, '-') << std::endl;
}

}  // namespace vyn::profiling
