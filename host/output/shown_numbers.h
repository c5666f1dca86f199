#pragma once

#include <cstdint>
#include <string>

namespace vyn::host {

/// The number with a comma in front of every third digit from the right: "1,234,567".
std::string grouped(std::uint64_t number);

/// "1 byte", "1,234 bytes".
std::string groupedCount(std::uint64_t number, const std::string& noun);

/// What part of the whole that is: "12.5 %". 0 and 100 are nothing and all; "-" of nothing.
std::string share(std::uint64_t part, std::uint64_t whole);

}  // namespace vyn::host
