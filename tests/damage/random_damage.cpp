#include "random_damage.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace vyn::test {
namespace {

constexpr std::size_t kMostBytes = 3000;

class Damage {
 public:
  Damage(DamagedLog& log, const std::vector<std::int64_t>& lengths, std::mt19937& random)
      : m_log(log), m_lengths(lengths), m_random(random) {}

  std::string doOne() {
    m_place = below(m_log.bytes.size());
    m_size = std::min(below(10) == 0 ? 1 + below(kMostBytes) : 1 + below(60),
                      m_log.bytes.size() - m_place);
    switch (below(7)) {
      case 0:
        change([](char c) { return static_cast<char>(~c); });
        return "flipped" + where();
      case 1:
        change([](char) { return '\0'; });
        return "zeroed" + where();
      case 2:
        change([this](char) { return anyByte(); });
        return "set at random" + where();
      case 3:
        insert(anyBytes(), std::vector<std::int64_t>(m_size, DamagedLog::kNowhere));
        return "put in" + where();
      case 4:
        m_log.bytes.erase(m_place, m_size);
        m_log.origins.erase(origin(m_place), origin(m_place + m_size));
        return "removed" + where();
      case 5:
        insert(m_log.bytes.substr(m_place, m_size), {origin(m_place), origin(m_place + m_size)});
        return "doubled" + where();
      default:
        return changeLength();
    }
  }

 private:
  using Origins = std::vector<std::int64_t>;

  std::size_t below(std::size_t limit) { return m_random() % limit; }
  char anyByte() { return static_cast<char>(m_random()); }
  Origins::iterator origin(std::size_t place) {
    return m_log.origins.begin() + static_cast<std::ptrdiff_t>(place);
  }
  std::string where() const {
    return " " + std::to_string(m_size) + " bytes at " + std::to_string(m_place);
  }

  template <typename Change>
  void change(Change changed) {
    for (std::size_t place = m_place; place < m_place + m_size; ++place) {
      const char before = m_log.bytes[place];
      m_log.bytes[place] = changed(before);
      if (m_log.bytes[place] != before) {
        m_log.origins[place] = DamagedLog::kNowhere;
      }
    }
  }

  std::string anyBytes() {
    std::string bytes(m_size, '\0');
    std::generate(bytes.begin(), bytes.end(), [this] { return anyByte(); });
    return bytes;
  }

  void insert(const std::string& bytes, const Origins& origins) {
    m_log.bytes.insert(m_place, bytes);
    m_log.origins.insert(origin(m_place), origins.begin(), origins.end());
  }

  // Of a chunk whose length is still there: one byte of it.
  std::string changeLength() {
    const std::int64_t length = m_lengths[below(m_lengths.size())];
    const auto found = std::find(m_log.origins.begin(), m_log.origins.end(), length);
    if (found == m_log.origins.end()) {
      return "nothing";
    }
    m_place = static_cast<std::size_t>(found - m_log.origins.begin()) + below(4);
    m_place = std::min(m_place, m_log.bytes.size() - 1);
    m_size = 1;
    change([this](char c) {
      return static_cast<char>(static_cast<unsigned char>(c) + 1 + below(255));
    });
    return "length changed:" + where();
  }

  DamagedLog& m_log;
  const std::vector<std::int64_t>& m_lengths;
  std::mt19937& m_random;
  std::size_t m_place = 0;
  std::size_t m_size = 0;
};

}  // namespace

DamagedLog::DamagedLog(const std::string& log) : bytes(log), origins(log.size()) {
  std::iota(origins.begin(), origins.end(), 0);
}

bool DamagedLog::holds(std::int64_t place, std::int64_t origin, std::int64_t size) const {
  if (place + size > static_cast<std::int64_t>(origins.size())) {
    return false;
  }
  for (std::int64_t i = 0; i < size; ++i) {
    if (origins[static_cast<std::size_t>(place + i)] != origin + i) {
      return false;
    }
  }
  return true;
}

std::string damageAtRandom(DamagedLog& log, const std::vector<std::int64_t>& lengths,
                           std::mt19937& random) {
  std::string what;
  for (std::size_t count = 1 + random() % 3; count > 0 && !log.bytes.empty(); --count) {
    what += (what.empty() ? "" : ", ") + Damage(log, lengths, random).doOne();
  }
  return what;
}

}  // namespace vyn::test
