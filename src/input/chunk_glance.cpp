#include "input/chunk_glance.h"

#include <profile_log_generated.h>

#include <cstring>

#include "input/chunk_format.h"

namespace vyn::profiling {
namespace {

// Builders put the root table in front of all others, behind its vtable and what aligns it.
constexpr std::uint32_t kFirstRoot = 4;
constexpr std::uint32_t kLastRoot = 256;

bool isPlausibleRoot(std::uint32_t offset) { return offset >= kFirstRoot && offset <= kLastRoot; }

// Bytes of a vtable: its own size and its table's, and as many fields as a schema may grow to have.
constexpr std::uint16_t kLeastVtable = 4;
constexpr std::uint16_t kMostVtable = 64;

// A table in a buffer, as far as it is needed; `where` counts from the buffer's first byte.
struct Table {
  std::uint64_t where = 0;
  std::uint64_t vtable = 0;
  std::uint16_t vtableSize = 0;
  std::uint16_t size = 0;
};

class Glance {
 public:
  Glance(ByteWindow& window, std::uint64_t buffer, std::uint64_t size)
      : m_window(window), m_buffer(buffer), m_size(size) {}

  std::optional<Table> root() const {
    const auto where = at<std::uint32_t>(0);
    return where && isPlausibleRoot(*where) ? table(*where) : std::nullopt;
  }

  std::optional<Table> table(std::uint64_t where) const {
    const auto back = at<std::int32_t>(where);
    const std::uint64_t vtable = where - static_cast<std::uint64_t>(std::int64_t{back.value_or(0)});
    const auto vtableSize = at<std::uint16_t>(vtable);
    const auto size = at<std::uint16_t>(vtable + sizeof(std::uint16_t));
    if (!back || !vtableSize || !size || *vtableSize % 2 != 0 || *vtableSize < kLeastVtable ||
        *vtableSize > kMostVtable || *vtableSize > m_size - vtable || *size < sizeof(*back) ||
        *size > m_size - where) {
      return std::nullopt;
    }
    return Table{where, vtable, *vtableSize, *size};
  }

  // Where the field's offset leads to; 0 when it is absent, none when it leads nowhere.
  std::optional<std::uint64_t> follow(const Table& table, std::uint16_t slot) const {
    if (slot >= table.vtableSize) {
      return 0;
    }
    const auto field = at<std::uint16_t>(table.vtable + slot);
    if (!field || *field == 0) {
      return field;
    }
    const auto offset = at<std::uint32_t>(table.where + *field);
    if (*field < sizeof(std::int32_t) || *field + sizeof(*offset) > table.size || !offset ||
        *offset == 0) {
      return std::nullopt;
    }
    const std::uint64_t target = table.where + *field + *offset;
    return target < m_size ? std::optional(target) : std::nullopt;
  }

  // The last one of the messages: written last, it stands nearest.
  bool hasMessage(std::uint64_t vector) const {
    const auto count = at<std::uint32_t>(vector);
    if (!count || *count == 0) {
      return false;
    }
    const std::uint64_t last = vector + std::uint64_t{*count} * sizeof(std::uint32_t);
    const auto offset = at<std::uint32_t>(last);
    const auto message = offset ? table(last + *offset) : std::nullopt;
    return message && follow(*message, schema::Message::VT_HEADER).value_or(0) != 0 &&
           follow(*message, schema::Message::VT_APPMETRICS).value_or(0) != 0;
  }

 private:
  // The number at `where`; none outside the buffer.
  template <typename Number>
  std::optional<Number> at(std::uint64_t where) const {
    return where < m_size && m_size - where >= sizeof(Number)
               ? m_window.numberAt<Number>(m_buffer + where)
               : std::nullopt;
  }

  ByteWindow& m_window;
  std::uint64_t m_buffer;  // where it begins
  std::uint64_t m_size;
};

// The length at `offset` when a chunk can have it.
std::optional<ChunkLength> plausibleLength(ByteWindow& window, std::uint64_t offset) {
  const auto length = window.numberAt<ChunkLength>(offset);
  return length && isPlausibleChunkSize(*length) ? length : std::nullopt;
}

std::uint64_t roomBehind(const ByteWindow& window, std::uint64_t offset) {
  return window.size() - offset - sizeof(ChunkLength);
}

}  // namespace

bool mayBeginWithRoot(const std::uint8_t* bytes) {
  std::uint32_t offset = 0;
  std::memcpy(&offset, bytes, sizeof(offset));
  return isPlausibleRoot(offset);
}

bool looksLikeRoot(ByteWindow& window, std::uint64_t offset, std::uint64_t room) {
  return Glance(window, offset, room).root().has_value();
}

bool looksLikeChunk(ByteWindow& window, std::uint64_t offset) {
  const auto length = plausibleLength(window, offset);
  if (!length || *length > roomBehind(window, offset)) {
    return false;
  }
  const Glance glance(window, offset + sizeof(ChunkLength), *length);
  const auto root = glance.root();
  if (!root) {
    return false;
  }
  const auto header = glance.follow(*root, schema::ProfileLog::VT_HEADER);
  const auto messages = glance.follow(*root, schema::ProfileLog::VT_MESSAGES);
  if (!header || !messages) {
    return false;
  }
  return *messages == 0 ? *header != 0 : glance.hasMessage(*messages) || *header != 0;
}

bool mayGoOnAt(ByteWindow& window, std::uint64_t offset) {
  if (offset == window.size()) {
    return true;
  }
  const auto length = plausibleLength(window, offset);
  return length &&
         (*length <= roomBehind(window, offset) ||
          looksLikeRoot(window, offset + sizeof(ChunkLength), roomBehind(window, offset)));
}

}  // namespace vyn::profiling
