#include "analysis/schema_rules.h"

#include <profile_log_generated.h>

namespace vyn::profiling {
namespace {

using Kind = FieldRule::Kind;

extern const TableRule kVersionRule;
extern const TableRule kLogHeaderRule;
extern const TableRule kMessageHeaderRule;
extern const TableRule kAppMetricsRule;
extern const TableRule kEventRule;
extern const TableRule kMessageRule;

constexpr FieldRule kVersionFields[] = {
    {"major", schema::Version::VT_MAJOR, Kind::kNumber, sizeof(std::uint32_t)},
    {"minor", schema::Version::VT_MINOR, Kind::kNumber, sizeof(std::uint32_t)},
    {"teeny", schema::Version::VT_TEENY, Kind::kNumber, sizeof(std::uint32_t)},
    {"versionFlag", schema::Version::VT_VERSIONFLAG, Kind::kNumber, sizeof(std::uint8_t)},
};

constexpr FieldRule kLogHeaderFields[] = {
    {"timeScale", schema::LogHeader::VT_TIMESCALE, Kind::kNumber, sizeof(float)},
    {"epochTime", schema::LogHeader::VT_EPOCHTIME, Kind::kNumber, sizeof(std::uint64_t)},
    {"timestamp", schema::LogHeader::VT_TIMESTAMP, Kind::kNumber, sizeof(std::uint64_t)},
    {"version", schema::LogHeader::VT_VERSION, Kind::kTable, 0, &kVersionRule},
    {"netRunVersion", schema::LogHeader::VT_NETRUNVERSION, Kind::kText},
    {"backendVersion", schema::LogHeader::VT_BACKENDVERSION, Kind::kText},
};

constexpr FieldRule kMessageHeaderFields[] = {
    {"timestamp", schema::MessageHeader::VT_TIMESTAMP, Kind::kNumber, sizeof(std::uint64_t)},
    {"sequenceNumber", schema::MessageHeader::VT_SEQUENCENUMBER, Kind::kNumber,
     sizeof(std::uint64_t)},
};

constexpr FieldRule kAppMetricsFields[] = {
    {"startTime", schema::AppMetrics::VT_STARTTIME, Kind::kNumber, sizeof(std::uint64_t)},
    {"stopTime", schema::AppMetrics::VT_STOPTIME, Kind::kNumber, sizeof(std::uint64_t)},
    {"startMem", schema::AppMetrics::VT_STARTMEM, Kind::kNumber, sizeof(std::uint64_t)},
    {"stopMem", schema::AppMetrics::VT_STOPMEM, Kind::kNumber, sizeof(std::uint64_t)},
    {"metricsFlag", schema::AppMetrics::VT_METRICSFLAG, Kind::kNumber, sizeof(std::uint8_t)},
};

constexpr FieldRule kEventFields[] = {
    {"identifier", schema::Event::VT_IDENTIFIER, Kind::kText},
    {"type", schema::Event::VT_TYPE, Kind::kNumber, sizeof(std::uint32_t)},
    {"uint64Value", schema::Event::VT_UINT64VALUE, Kind::kNumber, sizeof(std::uint64_t)},
    {"unit", schema::Event::VT_UNIT, Kind::kNumber, sizeof(std::uint32_t)},
    {"subEvents", schema::Event::VT_SUBEVENTS, Kind::kTables, 0, &kEventRule},
    {"valueType", schema::Event::VT_VALUETYPE, Kind::kNumber, sizeof(std::uint32_t)},
    {"int64Value", schema::Event::VT_INT64VALUE, Kind::kNumber, sizeof(std::int64_t)},
    {"floatValue", schema::Event::VT_FLOATVALUE, Kind::kNumber, sizeof(float)},
    {"rawData", schema::Event::VT_RAWDATA, Kind::kBytes},
    {"secondaryName", schema::Event::VT_SECONDARYNAME, Kind::kText},
    {"extraValue", schema::Event::VT_EXTRAVALUE, Kind::kNumber, sizeof(std::uint64_t)},
    {"doubleValue", schema::Event::VT_DOUBLEVALUE, Kind::kNumber, sizeof(double)},
    {"stringValue", schema::Event::VT_STRINGVALUE, Kind::kText},
};

constexpr FieldRule kMessageFields[] = {
    {"header", schema::Message::VT_HEADER, Kind::kTable, 0, &kMessageHeaderRule, true},
    {"method", schema::Message::VT_METHOD, Kind::kNumber, sizeof(std::int8_t)},
    {"appMetrics", schema::Message::VT_APPMETRICS, Kind::kTable, 0, &kAppMetricsRule, true},
    {"visibilityLevel", schema::Message::VT_VISIBILITYLEVEL, Kind::kNumber, sizeof(std::int8_t)},
    {"profilingEvents", schema::Message::VT_PROFILINGEVENTS, Kind::kTables, 0, &kEventRule},
    {"graphName", schema::Message::VT_GRAPHNAME, Kind::kText},
};

constexpr FieldRule kProfileLogFields[] = {
    {"header", schema::ProfileLog::VT_HEADER, Kind::kTable, 0, &kLogHeaderRule},
    {"messages", schema::ProfileLog::VT_MESSAGES, Kind::kTables, 0, &kMessageRule},
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
