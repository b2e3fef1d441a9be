#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// Whether the character is one of 0 to 9.
constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// What toInt16 gives for a number that is not whole, or that 16 bits do not hold.
std::optional<std::int16_t> roundedToInt16(double number);

/// The number rounded to the nearest whole one, halves to even; nullopt when 16 bits do not hold it, NaN included.
inline std::optional<std::int16_t> toInt16(double number) {
  // Nearly all numbers are whole already.
  if (number >= std::numeric_limits<std::int16_t>::min() && number <= std::numeric_limits<std::int16_t>::max()) {
    const auto whole = static_cast<std::int16_t>(number);
    if (whole == number) {
      return whole;
    }
  }
  return roundedToInt16(number);
}
/// The same for 32 bits.
std::optional<std::int32_t> toInt32(double number);

/// General number form: at most 7 significant digits, no trailing zeros, exponent as in 1E+07; -0 is "0", a NaN
/// "NAN", the infinities "INF" and "-INF".
std::string generalNumber(float number);
/// Appends the same to the text.
void appendGeneralNumber(std::string& text, float number);
/// Writes the same into a buffer of at least longestGeneralNumber characters. Returns the end.
char* writeGeneralNumber(char* to, float number);
constexpr std::size_t longestGeneralNumber = 16;

/// The number that the text is as a whole: sign, digits with an optional point, optional exponent. Nullopt for
/// anything else, the empty text and blanks included.
std::optional<double> strictNumber(std::string_view text);

/// The longest number that the text begins with, leading blanks aside; 0 when there is none.
double numericValue(std::string_view text);

}  // namespace kiv
