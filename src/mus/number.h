#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// The number rounded to the nearest whole one, halves to even; nullopt when 16 bits do not hold it, NaN included.
std::optional<std::int16_t> toInt16(double number);
/// The same for 32 bits.
std::optional<std::int32_t> toInt32(double number);

/// General number form: at most 7 significant digits, no trailing zeros, exponent as in 1E+07; -0 is "0", a NaN
/// "NAN", the infinities "INF" and "-INF".
std::string generalNumber(float number);

/// The number that the text is as a whole: sign, digits with an optional point, optional exponent. Nullopt for
/// anything else, the empty text and blanks included.
std::optional<double> strictNumber(std::string_view text);

/// The longest number that the text begins with, leading blanks aside; 0 when there is none.
double numericValue(std::string_view text);

}  // namespace kiv
