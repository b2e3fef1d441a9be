#include "base/exact_number.h"

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace kiv {

std::string exactNumber(float number) {
  std::array<char, 32> digits{};
  if (!std::isfinite(number)) {
    const auto length = std::snprintf(digits.data(), digits.size(), "0x%08X", std::bit_cast<std::uint32_t>(number));
    return {digits.data(), static_cast<std::size_t>(length)};
  }
  return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

bool readExactNumber(std::string_view word, float& number) {
  constexpr int hexadecimal = 16;
  if (word.starts_with("0x")) {
    std::uint32_t bits = 0;
    const auto result = std::from_chars(word.data() + 2, word.data() + word.size(), bits, hexadecimal);
    number = std::bit_cast<float>(bits);
    return result.ec == std::errc() && result.ptr == word.data() + word.size();
  }
  const auto result = std::from_chars(word.data(), word.data() + word.size(), number);
  return result.ec == std::errc() && result.ptr == word.data() + word.size() && std::isfinite(number);
}

}  // namespace kiv
