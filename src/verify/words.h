#pragma once

#include <cstddef>
#include <string>

namespace kiv::proof {

constexpr std::size_t wordSize = 4;  ///< bytes

/// Appends the word of a page file that holds a number: its bits as a single-precision number, the lowest byte first.
void appendWord(float number, std::string& bytes);

}  // namespace kiv::proof
