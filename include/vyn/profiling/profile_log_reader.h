#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "vyn/profiling/event_node.h"
#include "vyn/profiling/visibility_level.h"

namespace vyn::profiling {

/// Reader of one profiling log, made by a plug-in's `createReader` (reader_plugin.h).
///
/// Order of calls: `readInputFile` once, then any of the others. Nothing resets a reader; a second
/// log needs a second reader. Readers of one plug-in share process-wide state without a lock: drive
/// them from one thread at a time.
///
/// Failures of data and files are reported as a false result and a log line on standard output. The
/// operations throw only what the standard library throws when memory runs out, unless told below.
///
/// The order of the declarations is the binary interface: slots 0 to 8 of the virtual table.
template <typename Level>
class IVynProfileLogReader {
 public:
  /// Slot 0. Writes what was read. The JSON reader writes one document to `outputFileName`, which
  /// it creates or truncates, and fails on an empty name; of all JSON outputs of a process the
  /// first is one object and each later one the array of all logs read so far. The summary reader
  /// prints to standard output and, unless the name is empty, appends a CSV listing to the file.
  /// Returns false when the file cannot be opened; errors while writing are not noticed.
  virtual bool generateOutput(const std::string& outputFileName) = 0;

  /// Slots 1 and 2. A host destroys readers with `deleteReader` only.
  virtual ~IVynProfileLogReader() = default;

  /// Slot 3. The log header as lines of text, each with its line feed; empty before a header was
  /// saved, which the JSON reader never does.
  virtual std::string getHeaderDetails() = 0;

  /// Slot 4. Takes the next message of the chunk being read into the model. `readInputFile` calls
  /// it; a host does not. Returns true when the message was taken; false when it was filtered out,
  /// is of an unknown method, or no message was left.
  virtual bool processNextMessage() = 0;

  /// Slot 5. Reads the whole log that `createReader` named. `writeObjectPayloads` makes the summary
  /// reader's output also write the payloads of OBJECT events to files; the JSON reader ignores it.
  /// Returns false when the file cannot be opened or is damaged; what was read before the damage
  /// is then not in the JSON reader's output. A reader that has begun to read its log refuses to
  /// read it again, whatever became of the first read. When a chunk does not fit into memory, the
  /// JSON reader throws std::bad_alloc or std::length_error; the summary reader returns false.
  virtual bool readInputFile(bool writeObjectPayloads) = 0;

  /// Slot 6. Always 1.
  virtual int isReaderValid() = 0;

  /// Slot 7. Lists events and their direct sub-events on `stream`, one line each. Leaves the stream
  /// in fixed notation with precision 0 when it wrote a top-level event.
  virtual void printEvents(std::ostream& stream, std::vector<EventNode> events) = 0;

  /// Slot 8. Writes one CSV row for each event and direct sub-event that is not an OBJECT.
  /// `timestamp` (in the log's own unit) and `message` are the first two columns of every row.
  virtual void writeEventsCsv(std::ostream& stream, std::vector<EventNode> events,
                              std::uint64_t timestamp, const std::string& message) = 0;
};

}  // namespace vyn::profiling
