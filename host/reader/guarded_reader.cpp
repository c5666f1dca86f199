#include "host/reader/guarded_reader.h"

#include <exception>
#include <new>
#include <stdexcept>
#include <utility>

#include "files/file_error.h"
#include "host/input/log_diagnosis.h"

namespace vyn::host {
namespace {

constexpr int kIsValid = 1;

files::FileError failure(const LogFile& log, const std::string& reason) {
  return {log.name, "the reader failed" + reason + "; check the log or give another --reader"};
}

// The exception's own code may be the library's, so that nothing of it must get further.
template <typename Call>
auto guarded(const LogFile& log, Call call) {
  try {
    return call();
  } catch (const files::FileError&) {
    throw;
  } catch (const std::bad_alloc&) {
  } catch (const std::length_error&) {
  } catch (const std::exception& error) {
    throw failure(log, std::string(" (") + error.what() + ")");
  } catch (...) {
    throw failure(log, "");
  }
  throw files::FileError(log.name, kNotEnoughMemory);
}

}  // namespace

GuardedReader::GuardedReader(const ReaderLibrary& library, const LogFile& log,
                             profiling::VisibilityLevel level)
    : m_library(library), m_log(log) {
  m_reader = guarded(m_log, [&] { return m_library.createReader(m_log.path, level); });
  if (m_reader == nullptr) {
    throw files::FileError(m_library.path(), "made no reader; give another --reader");
  }
  try {
    if (guarded(m_log, [&] { return m_reader->isReaderValid(); }) != kIsValid) {
      throw files::FileError(m_library.path(),
                             "made a reader that is not valid; give another --reader");
    }
  } catch (const files::FileError&) {
    giveBackQuietly();
    throw;
  }
}

GuardedReader::~GuardedReader() { giveBackQuietly(); }

void GuardedReader::read(bool writeObjectPayloads, const ReaderOutput& said) {
  guarded(m_log, [&] {
    if (!m_reader->readInputFile(writeObjectPayloads)) {
      throw files::FileError(m_log.name, diagnoseLog(m_log, said.lastLine()));
    }
    checkStillWhole(m_log);
  });
}

void GuardedReader::generateOutput(const std::string& file, const std::string& target,
                                   const ReaderOutput& said) {
  if (!guarded(m_log, [&] { return m_reader->generateOutput(file); })) {
    const std::string reason = said.lastLine();
    throw files::FileError(
        target, "the reader could not write it and " +
                    (reason.empty() ? "does not say why; check the place" : "says: " + reason));
  }
}

std::string GuardedReader::headerDetails() {
  return guarded(m_log, [&] { return m_reader->getHeaderDetails(); });
}

void GuardedReader::giveBack() {
  if (m_reader == nullptr) {
    return;
  }
  guarded(m_log, [&] { m_library.deleteReader(std::exchange(m_reader, nullptr)); });
}

void GuardedReader::giveBackQuietly() {
  try {
    giveBack();
  } catch (const std::exception&) {
  }
}

}  // namespace vyn::host
