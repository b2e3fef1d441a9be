#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// The shortest decimal number that reads back as the same float; what decimal numbers cannot express, NaNs and
/// infinities, is written by its bits, as in 0x7FC00000.
std::string exactNumber(float number);
/// Reads what exactNumber wrote. False when the word is no such number.
bool readExactNumber(std::string_view word, float& number);

}  // namespace kiv
