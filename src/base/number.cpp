#include "base/number.h"

#include <algorithm>
#include <array>
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
std::optional<Integer> rounded(double number) {
  const double whole = roundHalfToEven(number);
  const bool fits = whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max();
  return fits ? std::optional(static_cast<Integer>(whole)) : std::nullopt;
}

/// The number that a text begins with, and its length in characters: 0 when there is no number.
struct LeadingNumber {
  double value = 0;
  std::size_t length = 0;
};

/// What a number beyond the range of doubles comes to.
double beyondRange(std::string_view digits) {
  const std::size_t exponent = digits.find_first_of("eE");
  const bool tiny = exponent != std::string_view::npos && digits.substr(exponent + 1).starts_with('-');
  return tiny ? 0.0 : std::numeric_limits<double>::infinity();
}

LeadingNumber leadingNumber(std::string_view text) {
  const std::size_t sign = text.starts_with('+') || text.starts_with('-') ? 1 : 0;
  const std::string_view digits = text.substr(sign);
  // from_chars would also accept the words for infinity and for not-a-number, and a second sign.
  if (digits.empty() || (digits.front() != '.' && !isDigit(digits.front()))) {
    return {};
  }
  double value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error == std::errc::invalid_argument) {
    return {};
  }
  const auto length = static_cast<std::size_t>(end - digits.data());
  if (error == std::errc::result_out_of_range) {
    value = beyondRange(digits.substr(0, length));
  }
  return {text.starts_with('-') ? -value : value, sign + length};
}

}  // namespace

std::optional<std::int16_t> roundedToInt16(double number) {
  return rounded<std::int16_t>(number);
}

std::optional<std::int32_t> toInt32(double number) {
  return rounded<std::int32_t>(number);
}

std::string generalNumber(float number) {
  std::string text;
  appendGeneralNumber(text, number);
  return text;
}

void appendGeneralNumber(std::string& text, float number) {
  std::array<char, longestGeneralNumber> digits;  // NOLINT(*-member-init): written before it is read
  text.append(digits.data(), static_cast<std::size_t>(writeGeneralNumber(digits.data(), number) - digits.data()));
}

char* writeGeneralNumber(char* to, float number) {
  constexpr int significantDigits = 7;
  constexpr float firstWithExponent = 1E7F;
  char* const end = to + longestGeneralNumber;
  if (number > -firstWithExponent && number < firstWithExponent &&
      static_cast<float>(static_cast<int>(number)) == number) {
    return std::to_chars(to, end, static_cast<int>(number)).ptr;
  }
  if (std::isnan(number)) {
    return std::ranges::copy(std::string_view("NAN"), to).out;
  }
  if (std::isinf(number)) {
    return std::ranges::copy(std::string_view(number < 0 ? "-INF" : "INF"), to).out;
  }
  char* const last =
      std::to_chars(to, end, static_cast<double>(number), std::chars_format::general, significantDigits).ptr;
  std::replace(to, last, 'e', 'E');
  return last;
}

std::optional<double> strictNumber(std::string_view text) {
  constexpr std::size_t fewDigits = 9;
  if (!text.empty() && text.size() <= fewDigits && std::all_of(text.begin(), text.end(), isDigit)) {
    int whole = 0;
    for (const char digit : text) {
      whole = 10 * whole + (digit - '0');
    }
    return whole;
  }
  const LeadingNumber number = leadingNumber(text);
  return number.length > 0 && number.length == text.size() ? std::optional(number.value) : std::nullopt;
}

double numericValue(std::string_view text) {
  return leadingNumber(text.substr(std::min(text.find_first_not_of(' '), text.size()))).value;
}

}  // namespace kiv
