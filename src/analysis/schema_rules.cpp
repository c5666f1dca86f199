#include "analysis/schema_rules.h"

#include <profile_log_generated.h>

namespace vyn::profiling {
namespace {

using flatbuffers::voffset_t;
using Kind = FieldRule::Kind;

template <typename Number>
constexpr FieldRule number(const char* name, voffset_t slot) {
  return {name, nullptr, slot, sizeof(Number), Kind::kNumber, false};
}

constexpr FieldRule text(const char* name, voffset_t slot) {
  return {name, nullptr, slot, 0, Kind::kText, false};
}

constexpr FieldRule bytes(const char* name, voffset_t slot) {
  return {name, nullptr, slot, 0, Kind::kBytes, false};
}

constexpr FieldRule table(const char* name, voffset_t slot, const TableRule* rule) {
  return {name, rule, slot, 0, Kind::kTable, false};
}

constexpr FieldRule requiredTable(const char* name, voffset_t slot, const TableRule* rule) {
  return {name, rule, slot, 0, Kind::kTable, true};
}

constexpr FieldRule tables(const char* name, voffset_t slot, const TableRule* rule) {
  return {name, rule, slot, 0, Kind::kTables, false};
}

extern const TableRule kVersionRule;
extern const TableRule kLogHeaderRule;
extern const TableRule kMessageHeaderRule;
extern const TableRule kAppMetricsRule;
extern const TableRule kEventRule;
extern const TableRule kMessageRule;

constexpr FieldRule kVersionFields[] = {
    number<std::uint32_t>("major", schema::Version::VT_MAJOR),
    number<std::uint32_t>("minor", schema::Version::VT_MINOR),
    number<std::uint32_t>("teeny", schema::Version::VT_TEENY),
    number<std::uint8_t>("versionFlag", schema::Version::VT_VERSIONFLAG),
};

constexpr FieldRule kLogHeaderFields[] = {
    number<float>("timeScale", schema::LogHeader::VT_TIMESCALE),
    number<std::uint64_t>("epochTime", schema::LogHeader::VT_EPOCHTIME),
    number<std::uint64_t>("timestamp", schema::LogHeader::VT_TIMESTAMP),
    table("version", schema::LogHeader::VT_VERSION, &kVersionRule),
    text("netRunVersion", schema::LogHeader::VT_NETRUNVERSION),
    text("backendVersion", schema::LogHeader::VT_BACKENDVERSION),
};

constexpr FieldRule kMessageHeaderFields[] = {
    number<std::uint64_t>("timestamp", schema::MessageHeader::VT_TIMESTAMP),
    number<std::uint64_t>("sequenceNumber", schema::MessageHeader::VT_SEQUENCENUMBER),
};

constexpr FieldRule kAppMetricsFields[] = {
    number<std::uint64_t>("startTime", schema::AppMetrics::VT_STARTTIME),
    number<std::uint64_t>("stopTime", schema::AppMetrics::VT_STOPTIME),
    number<std::uint64_t>("startMem", schema::AppMetrics::VT_STARTMEM),
    number<std::uint64_t>("stopMem", schema::AppMetrics::VT_STOPMEM),
    number<std::uint8_t>("metricsFlag", schema::AppMetrics::VT_METRICSFLAG),
};

constexpr FieldRule kEventFields[] = {
    text("identifier", schema::Event::VT_IDENTIFIER),
    number<std::uint32_t>("type", schema::Event::VT_TYPE),
    number<std::uint64_t>("uint64Value", schema::Event::VT_UINT64VALUE),
    number<std::uint32_t>("unit", schema::Event::VT_UNIT),
    tables("subEvents", schema::Event::VT_SUBEVENTS, &kEventRule),
    number<std::uint32_t>("valueType", schema::Event::VT_VALUETYPE),
    number<std::int64_t>("int64Value", schema::Event::VT_INT64VALUE),
    number<float>("floatValue", schema::Event::VT_FLOATVALUE),
    bytes("rawData", schema::Event::VT_RAWDATA),
    text("secondaryName", schema::Event::VT_SECONDARYNAME),
    number<std::uint64_t>("extraValue", schema::Event::VT_EXTRAVALUE),
    number<double>("doubleValue", schema::Event::VT_DOUBLEVALUE),
    text("stringValue", schema::Event::VT_STRINGVALUE),
};

constexpr FieldRule kMessageFields[] = {
    requiredTable("header", schema::Message::VT_HEADER, &kMessageHeaderRule),
    number<std::int8_t>("method", schema::Message::VT_METHOD),
    requiredTable("appMetrics", schema::Message::VT_APPMETRICS, &kAppMetricsRule),
    number<std::int8_t>("visibilityLevel", schema::Message::VT_VISIBILITYLEVEL),
    tables("profilingEvents", schema::Message::VT_PROFILINGEVENTS, &kEventRule),
    text("graphName", schema::Message::VT_GRAPHNAME),
};

constexpr FieldRule kProfileLogFields[] = {
    table("header", schema::ProfileLog::VT_HEADER, &kLogHeaderRule),
    tables("messages", schema::ProfileLog::VT_MESSAGES, &kMessageRule),
};

const TableRule kVersionRule = {"Version", kVersionFields};
const TableRule kLogHeaderRule = {"LogHeader", kLogHeaderFields};
const TableRule kMessageHeaderRule = {"MessageHeader", kMessageHeaderFields};
const TableRule kAppMetricsRule = {"AppMetrics", kAppMetricsFields};
const TableRule kEventRule = {"Event", kEventFields};
const TableRule kMessageRule = {"Message", kMessageFields};

}  // namespace

const TableRule kProfileLogRule = {"ProfileLog", kProfileLogFields};

}  // namespace vyn::profiling
