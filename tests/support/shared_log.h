#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vyn::test {

// Logs that name the same bytes over and over, which texts in the JSON form cannot. Each is one
// chunk with its length in front; graphs are executed synchronously unless told otherwise.

/// One execution that names the same event `count` times, with an identifier of `length` times the
/// same byte.
std::string logOfSharedEvent(std::size_t count, std::size_t length, char byte = 'i');

/// The same, but below two other events, where none is listed.
std::string logOfUnlistedEvent(std::size_t count, std::size_t length);

/// Executions with a node for each of the names. A node has an event of its own in each execution,
/// but all of these share its name.
std::string logOfSharedNames(const std::vector<std::string>& names, std::size_t executions);

/// One execution with a tree of two to the power of `depth + 1`, less one, short events.
std::string logOfSharedTree(std::size_t depth);

/// Two executions of one graph. The first has `count` events of different short identifiers below
/// two others, of which none is listed; the second, just as long, has the last one alone.
std::string logOfOneMoreSmallExecution(std::size_t count);

/// One execution that names the same event `count` times, with a short identifier and `length`
/// payload bytes, which have no file to go to.
std::string logOfSharedPayload(std::size_t count, std::size_t length);

/// One execution with `count` payloads for each of the files.
std::string logOfPayloadsFor(const std::vector<std::string>& names, std::size_t count);

/// One execution that names the same payload for the file `count` times, which has `count`
/// sub-events.
std::string logOfPayloadAboveEvents(const std::string& name, std::size_t count);

/// `count` executions whose graph names are one text of `length` bytes.
std::string logOfSharedGraphName(std::size_t count, std::size_t length);

/// The same for `count` finalize steps, each with one event.
std::string logOfSharedFinalizeName(std::size_t count, std::size_t length);

/// `count` executions whose graph names end together, after 300 bytes and 4 more for each later
/// name.
std::string logOfDifferentOverlappingGraphNames(std::size_t count);

/// `count` executions whose graph names are equal texts of 1,024 times `count` bytes, each four
/// bytes behind the last one in the same stretch of the chunk. `count` is at most 16,000.
std::string logOfOverlappingGraphNames(std::size_t count);

}  // namespace vyn::test
