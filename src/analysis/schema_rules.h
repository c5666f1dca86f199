#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstdint>
#include <span>

namespace vyn::profiling {

struct TableRule;

/// What must hold of one field of a table, as the log's schema says.
struct FieldRule {
  enum class Kind : std::uint8_t { kNumber, kText, kBytes, kTable, kTables };

  const char* name;
  const TableRule* table;       ///< of the field, or of what it lists; null for the other kinds
  flatbuffers::voffset_t slot;  ///< where the layout of a table says where the field is
  std::uint8_t size;            ///< of a number, in bytes
  Kind kind;
  bool isRequired;
};

struct TableRule {
  const char* name;
  std::span<const FieldRule> fields;  ///< in the schema's order
};

/// The root of a chunk.
extern const TableRule kProfileLogRule;

}  // namespace vyn::profiling
