#pragma once

#include <cstdint>
#include <optional>
#include <string>

// The rules for numbers, implemented for the proof alone.
namespace kiv::proof {

/// The number rounded to a whole one, halves to even; nullopt when 16 bits do not hold it, NaN included.
std::optional<std::int16_t> roundedTo16Bits(double number);

/// General number form: at most 7 significant digits, as in "0.6" and "1E+07".
std::string generalForm(float number);

}  // namespace kiv::proof
