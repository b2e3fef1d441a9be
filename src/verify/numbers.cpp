#include "verify/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace kiv::proof {

std::optional<std::int16_t> roundedTo16Bits(double number) {
  using Limits = std::numeric_limits<std::int16_t>;
  // The remainder is taken from the nearest whole number, of two the even one, in every rounding mode.
  const double whole = number - std::remainder(number, 1.0);
  return whole >= Limits::min() && whole <= Limits::max() ? std::optional(static_cast<std::int16_t>(whole))
                                                          : std::nullopt;
}

std::optional<std::int16_t> wholeIn(std::string_view text) {
  // Words for what is no number would be read, too.
  if (text.empty() || text.find_first_not_of("+-.0123456789eE") != std::string_view::npos) {
    return std::nullopt;
  }
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool isNumber = error == std::errc() && end == text.data() + text.size();
  return isNumber ? roundedTo16Bits(number) : std::nullopt;
}

std::string generalForm(float number) {
  if (number == 0) {
    return "0";
  }
  if (std::isnan(number)) {
    return "NAN";
  }
  if (std::isinf(number)) {
    return number > 0 ? "INF" : "-INF";
  }
  constexpr int significantDigits = 7;
  std::array<char, 16> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<double>(number),
                                 std::chars_format::general, significantDigits)
                       .ptr;
  std::replace(digits.data(), end, 'e', 'E');
  return {digits.data(), end};
}

}  // namespace kiv::proof
