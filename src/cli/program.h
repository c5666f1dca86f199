#pragma once

#include <functional>
#include <string>

namespace vyn::cli {

// Exit statuses.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;
inline constexpr int kWrongUsage = 2;
inline constexpr int kDamagedLog = 3;  // done, but something in the log was damaged or lost
inline constexpr int kMissedGate = 4;  // done, but what was measured is not what was asked for

/// Writes one line to standard error, behind the program's name. Names may hold what would break
/// the line or what a terminal obeys; it is escaped.
void reportLine(const std::string& program, const std::string& text);

/// Prepares the standard streams and runs the program's `work`, which returns the exit status. What
/// it throws is reported and returned as kFailed; of a files::ClosedPipe the program dies quietly.
int runProgram(const std::string& program, const std::function<int()>& work);

}  // namespace vyn::cli
