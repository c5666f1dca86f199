#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace vyn::test {

/// What is known beforehand of a damaged log.
enum class Expectation { kSound, kDamaged, kEither };

/// Gets each damaged form of a log, with a text that says what was done to it.
using DamageVisitor =
    std::function<void(const std::string& what, const std::string& log, Expectation expectation)>;

/// Visits the log in every damaged form: cut at every byte; every bit flipped; every field of 1, 2,
/// 4 and 8 bytes, wherever it starts, set to its extreme values; chunks dropped, doubled, swapped.
void forEachDamage(const std::string& log, const DamageVisitor& visit);

}  // namespace vyn::test
