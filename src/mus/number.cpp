#include "mus/number.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>

namespace kiv {
namespace {

// std::nearbyint would follow the rounding mode that another library may have left behind.
double roundHalfToEven(double number) {
  const double below = std::floor(number);
  const double part = number - below;
  if (part != 0.5) {
    return part < 0.5 ? below : below + 1;
  }
  return std::fmod(below, 2) == 0 ? below : below + 1;
}

template <typename Integer>
std::optional<Integer> toInteger(double number) {
  const double whole = roundHalfToEven(number);
  const bool fits = whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max();
  return fits ? std::optional(static_cast<Integer>(whole)) : std::nullopt;
}

}  // namespace

std::optional<std::int16_t> toInt16(double number) {
  return toInteger<std::int16_t>(number);
}

std::optional<std::int32_t> toInt32(double number) {
  return toInteger<std::int32_t>(number);
}

std::string generalNumber(float number) {
  if (std::isnan(number)) {
    return "NAN";
  }
  if (std::isinf(number)) {
    return number < 0 ? "-INF" : "INF";
  }
  constexpr int significantDigits = 7;
  constexpr float firstWithExponent = 1E7F;
  std::array<char, 32> digits{};
  if (number > -firstWithExponent && number < firstWithExponent &&
      static_cast<float>(static_cast<int>(number)) == number) {
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<int>(number)).ptr};
  }
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<double>(number),
                                 std::chars_format::general, significantDigits)
                       .ptr;
  std::replace(digits.data(), end, 'e', 'E');
  return {digits.data(), end};
}

std::optional<double> strictNumber(std::string_view text) {
  const bool plus = text.starts_with('+');
  const std::string_view digits = text.substr(plus ? 1 : 0);
  const std::size_t first = !plus && digits.starts_with('-') ? 1 : 0;
  // What from_chars takes beyond numbers: the words for infinity and for not-a-number.
  const bool numeric =
      digits.size() > first && (std::isdigit(static_cast<unsigned char>(digits[first])) != 0 || digits[first] == '.');
  if (!numeric) {
    return std::nullopt;
  }
  double number = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (result.ptr != digits.data() + digits.size()) {
    return std::nullopt;
  }
  if (result.ec == std::errc::result_out_of_range) {
    const std::size_t exponent = digits.find_first_of("eE");
    const bool tiny = exponent != std::string_view::npos && digits.substr(exponent + 1).starts_with('-');
    return tiny ? 0.0 : std::numeric_limits<double>::infinity();
  }
  return result.ec == std::errc() ? std::optional(number) : std::nullopt;
}

}  // namespace kiv
