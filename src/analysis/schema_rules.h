#pragma once

#include <flatbuffers/flatbuffers.h>

#include <cstddef>
#include <span>

namespace vyn::profiling {

struct TableRule;

/// What must hold of one field of a table, as the log's schema says.
struct FieldRule {
  enum class Kind { kNumber, kText, kBytes, kTable, kTables };

  const char* name;
  flatbuffers::voffset_t slot;  ///< where the layout of a table says where the field is
  Kind kind;
  std::size_t size = 0;              ///< of a number, in bytes
  const TableRule* table = nullptr;  ///< of the field, or of what it lists
  bool isRequired = false;
};

struct TableRule {
  const char* name;
  std::span<const FieldRule> fields;  ///< in the schema's order
};

/// The root of a chunk.
extern const TableRule kProfileLogRule;

}  // namespace vyn::profiling
