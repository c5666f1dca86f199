#include "host/output/shown_numbers.h"

#include <array>
#include <charconv>
#include <cstddef>

namespace vyn::host {

std::string grouped(std::uint64_t number) {
  constexpr std::size_t kGroup = 3;  // digits
  std::string text = std::to_string(number);
  for (std::size_t end = text.size(); end > kGroup; end -= kGroup) {
    text.insert(end - kGroup, 1, ',');
  }
  return text;
}

std::string groupedCount(std::uint64_t number, const std::string& noun) {
  return grouped(number) + " " + noun + (number == 1 ? "" : "s");
}

std::string share(std::uint64_t part, std::uint64_t whole) {
  if (whole == 0) {
    return "-";
  }
  constexpr double kLeastShown = 0.05;
  std::array<char, 16> text{};
  const double percent = 100.0 * static_cast<double>(part) / static_cast<double>(whole);
  if (part > 0 && percent < kLeastShown) {
    return "<0.1 %";
  }
  if (part < whole && percent >= 100 - kLeastShown) {
    return ">99.9 %";
  }
  const auto result =
      std::to_chars(text.data(), text.data() + text.size(), percent, std::chars_format::fixed, 1);
  return std::string(text.data(), result.ptr) + " %";
}

}  // namespace vyn::host
