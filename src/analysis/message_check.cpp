#include "analysis/message_check.h"

#include <cstdint>
#include <string>

namespace vyn::profiling {
namespace {

using schema::MethodType;

bool isExecution(MethodType method) {
  return method == MethodType::BACKEND_EXECUTE || method == MethodType::BACKEND_EXECUTE_ASYNC;
}

}  // namespace

void MessageCheck::check(const schema::Message& message) {
  checkMethod(message);
  checkMetrics(*message.appMetrics());
  checkTime(*message.header());
  checkSequence(*message.header());
}

void MessageCheck::checkMethod(const schema::Message& message) {
  const MethodType method = message.method();
  if (*schema::EnumNameMethodType(method) == '\0') {
    m_site.report(CheckCode::kUnknownMethod, &message, [method] {
      return Evidence{"the method " + std::to_string(static_cast<int>(method)),
                      "one of the schema"};
    });
  }
  if (isExecution(method) && message.graphName() == nullptr) {
    m_site.report(CheckCode::kNoGraphName, &message, [method] {
      return Evidence{
          std::string("the method ") + schema::EnumNameMethodType(method) + " without graphName",
          "the name of the graph that was executed"};
    });
  }
}

void MessageCheck::checkMetrics(const schema::AppMetrics& metrics) {
  using schema::AppMetrics;
  const bool hasBoth = flatbuffers::IsFieldPresent(&metrics, AppMetrics::VT_STARTTIME) &&
                       flatbuffers::IsFieldPresent(&metrics, AppMetrics::VT_STOPTIME);
  if (hasBoth && metrics.stopTime() < metrics.startTime()) {
    m_site.report(CheckCode::kStopBeforeStart, &metrics, [&metrics] {
      return Evidence{"stopTime " + std::to_string(metrics.stopTime()) + " us",
                      "startTime, " + std::to_string(metrics.startTime()) + " us, or later"};
    });
  }
}

void MessageCheck::checkTime(const schema::MessageHeader& header) {
  if (!flatbuffers::IsFieldPresent(&header, schema::MessageHeader::VT_TIMESTAMP)) {
    return;
  }
  const std::uint64_t time = header.timestamp();
  if (m_lastTime && time < *m_lastTime) {
    m_site.report(CheckCode::kTimeGoesBack, &header, [&] {
      return Evidence{"the time stamp " + std::to_string(time),
                      std::to_string(*m_lastTime) + ", as of the message before, or later"};
    });
  }
  m_lastTime = time;
}

// An absent number is a 0, which builders leave out. Only a log that has no number yet may be one
// that is written without any.
void MessageCheck::checkSequence(const schema::MessageHeader& header) {
  const std::uint64_t number = header.sequenceNumber();
  if (m_lastNumber) {
    checkSuccessor(number, *m_lastNumber, header);
  }
  if (m_lastNumber || number != 0) {
    m_lastNumber = number;
  }
}

void MessageCheck::checkSuccessor(std::uint64_t number, std::uint64_t last,
                                  const schema::MessageHeader& header) {
  if (number > last && number - last == 1) {
    return;
  }
  const CheckCode code = number < last    ? CheckCode::kSequenceGoesBack
                         : number == last ? CheckCode::kSequenceRepeat
                                          : CheckCode::kSequenceGap;
  m_site.report(code, &header, [number, last] {
    return Evidence{
        "the sequence number " + std::to_string(number) + " behind " + std::to_string(last),
        last == UINT64_MAX ? "none, for no number is larger" : std::to_string(last + 1)};
  });
}

}  // namespace vyn::profiling
