#include "analysis/check_codes.h"

namespace vyn::profiling {
namespace {

constexpr char kCopyAgain[] =
    "copy the log again; if it is still so, save what is whole: vyn-profile-viewer recover";
constexpr char kCopyOrCorrect[] =
    "copy the log again, or save what is whole: vyn-profile-viewer recover; if it stays so, "
    "correct "
    "what wrote the log";
constexpr char kUpdate[] =
    "read the log with a newer vyn-profile-viewer; if there is none, correct the writer";
constexpr char kCorrectWriter[] = "correct what wrote the log";
constexpr char kCheckClock[] =
    "check that the log is of one run, and that the writer's clock is steady";
constexpr char kCheckOrder[] =
    "check that the log is of one run, and that its parts were joined in their order";

}  // namespace

const std::array<CheckCodeEntry, kCheckCodeCount> kCheckCodes = {{
    {"VYN101", Severity::kError, "the log ends inside the length of its first chunk",
     "wait until the run has written a chunk, or copy the log again"},
    {"VYN102", Severity::kError, "no chunk can have the length that is announced", kCopyAgain},
    {"VYN103", Severity::kError, "the log ends inside a chunk",
     "wait until the run has ended, copy the log again, or save what is whole: vyn-profile-viewer "
     "recover"},
    {"VYN104", Severity::kError, "the system could not read on",
     "check the disk, or copy the log again"},
    {"VYN105", Severity::kError, "this is no profiling log", "give a log that vyn-net-run wrote"},
    {"VYN111", Severity::kError, "an offset leads out of its chunk", kCopyAgain},
    {"VYN112", Severity::kError, "the layout of a table cannot be read", kCopyAgain},
    {"VYN113", Severity::kError, "a number, list or text reaches out of its chunk", kCopyAgain},
    {"VYN114", Severity::kError, "a text does not end with a zero byte", kCopyAgain},
    {"VYN115", Severity::kError, "a required field is missing", kCopyOrCorrect},
    {"VYN116", Severity::kError, "tables nest too deeply", kCopyOrCorrect},
    {"VYN117", Severity::kError, "a chunk names more tables than its size allows", kCopyOrCorrect},
    {"VYN119", Severity::kError, "a chunk is damaged in a way that could not be found", kCopyAgain},
    {"VYN201", Severity::kWarning, "the log has no header",
     "take care that its first chunk is not lost; a document of the log has no metadata"},
    {"VYN202", Severity::kWarning, "a later header differs from the first one",
     "check that the log is of one run; readers take the first header"},
    {"VYN203", Severity::kWarning, "a few bytes follow the last chunk",
     "wait until the run has ended, or leave them: readers do"},
    {"VYN204", Severity::kWarning, "not all texts of a chunk were looked at",
     "take it that flaws of texts may be missed: texts overlap, or very many are shared"},
    {"VYN211", Severity::kWarning, "the method is unknown", kUpdate},
    {"VYN212", Severity::kWarning, "the type of an event is unknown", kUpdate},
    {"VYN213", Severity::kWarning, "the unit of an event is unknown", kUpdate},
    {"VYN214", Severity::kWarning, "the value type of an event is unknown", kUpdate},
    {"VYN221", Severity::kWarning, "a value is no finite number",
     "correct what measured it; no JSON document can be made of the log"},
    {"VYN222", Severity::kWarning, "a text is not UTF-8", kCorrectWriter},
    {"VYN223", Severity::kWarning, "a text holds a zero byte",
     "correct what wrote the log; the JSON document ends the text there"},
    {"VYN224", Severity::kWarning, "an event lacks the value that its value type names",
     kCorrectWriter},
    {"VYN225", Severity::kWarning, "the name of a payload leads out of the folder",
     "do not write the payloads of a log that you do not trust"},
    {"VYN226", Severity::kWarning, "the parts of an event are more than the event",
     "check what measured it: parts may overlap in time, or be counted twice"},
    {"VYN231", Severity::kWarning, "an operation stops before it starts", kCheckClock},
    {"VYN232", Severity::kWarning, "time goes back from one message to the next", kCheckClock},
    {"VYN233", Severity::kWarning, "sequence numbers go back", kCheckOrder},
    {"VYN234", Severity::kWarning, "sequence numbers leave a gap",
     "look for messages that the writer dropped or that were cut out"},
    {"VYN235", Severity::kWarning, "a sequence number is repeated", kCheckOrder},
    {"VYN241", Severity::kWarning, "an execution has no graph name",
     "correct what wrote the log; the summary leaves the execution out"},
    {"VYN242", Severity::kWarning, "an asynchronous execution has no queue wait",
     "correct what wrote the log; the summary gives no figures without queue waits"},
    {"VYN243", Severity::kWarning, "an asynchronous execution has several queue waits",
     "correct what wrote the log; the summary gives no figures without queue waits"},
}};

}  // namespace vyn::profiling
