#pragma once

#include <cstdint>

namespace vyn::profiling {

/// Sums and products of sizes, which a log may make as large as it likes: the largest number stands
/// for all beyond it.
constexpr std::uint64_t saturatingSum(std::uint64_t left, std::uint64_t right) {
  return right > UINT64_MAX - left ? UINT64_MAX : left + right;
}

constexpr std::uint64_t saturatingProduct(std::uint64_t left, std::uint64_t right) {
  return left != 0 && right > UINT64_MAX / left ? UINT64_MAX : left * right;
}

}  // namespace vyn::profiling
