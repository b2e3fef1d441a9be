#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

// The rules for numbers, implemented for the proof alone.
namespace kiv::proof {

/// The number rounded to a whole one, halves to even; nullopt when 16 bits do not hold it, NaN included.
std::optional<std::int16_t> roundedTo16Bits(double number);

/// The whole number that a text comes to when it is a number from its first character to its last, as in "2.5" and
/// "1E+07"; nullopt for any other text, and for a number that 16 bits do not hold.
std::optional<std::int16_t> wholeIn(std::string_view text);

/// General number form: at most 7 significant digits, as in "0.6" and "1E+07".
std::string generalForm(float number);

}  // namespace kiv::proof
