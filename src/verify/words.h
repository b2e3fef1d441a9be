#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace kiv::proof {

constexpr std::size_t wordSize = 4;  ///< bytes

/// Appends the words of a page file that hold these numbers: the bits of each as a single-precision number, the lowest
/// byte first.
void appendWords(std::span<const float> numbers, std::string& bytes);
/// The same for a single one.
void appendWord(float number, std::string& bytes);

}  // namespace kiv::proof
