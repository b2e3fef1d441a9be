#pragma once

#include <bit>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

/// Pages put together from their fields, for the tests in which the very bytes matter. Nothing here leans on the code
/// under test.
namespace kiv::test {

/// The two bytes before the items: how many words follow, lowest byte first.
inline std::string header(int words) {
  const auto bits = static_cast<unsigned>(words);
  return {static_cast<char>(bits & 0xFFU), static_cast<char>(bits >> 8U & 0xFFU)};
}

/// Four bytes, lowest first.
inline std::string wordOfBits(std::uint32_t bits) {
  std::string word;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    word.push_back(static_cast<char>(bits >> shift & 0xFFU));
  }
  return word;
}

inline std::string words(std::initializer_list<float> numbers) {
  std::string result;
  for (const float number : numbers) {
    result += wordOfBits(std::bit_cast<std::uint32_t>(number));
  }
  return result;
}

inline std::string zeroWords(std::size_t count) {
  return std::string(4 * count, '\0');
}

/// The bytes of a listing such as "20 20 00 00"; line ends count as blanks.
inline std::string bytes(std::string_view listing) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string result;
  std::size_t half = 0;
  std::size_t high = 0;
  for (const char c : listing) {
    const std::size_t digit = digits.find(c);
    if (digit == std::string_view::npos) {
      continue;
    }
    if (half++ % 2 == 0) {
      high = digit;
    } else {
      result.push_back(static_cast<char>(high * 16 + digit));
    }
  }
  return result;
}

/// The inverse, for readable failures.
inline std::string hex(std::string_view content) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string result;
  for (const char c : content) {
    const auto byte = static_cast<unsigned char>(c);
    ((result += digits[byte / 16U]) += digits[byte % 16U]) += ' ';
  }
  return result;
}

/// The six words after the items, as the writer writes them.
inline std::string trailer() {
  return bytes(
      "20 20 00 00"    // two blanks
      "00 00 00 00"    // trailer number 0 in three bytes, one spare byte
      "00 00 40 40"    // 3
      "00 00 00 00"    // unit flag 0: inches
      "00 00 A0 40"    // 5
      "00 3C 1C C6");  // -9999
}

/// The items between a header that fits them and the trailer.
inline std::string pageOf(std::string_view items) {
  return header(static_cast<int>(items.size() / 4) + 6) + std::string(items) + trailer();
}

/// Bytes in a heap block of just their size, so that the address sanitizer sees a read past the end.
class ExactBytes {
 public:
  explicit ExactBytes(std::string_view content) : block_(content.begin(), content.end()) {}

  std::string_view view() const { return {block_.data(), block_.size()}; }
  void set(std::size_t at, int value) { block_[at] = static_cast<char>(value); }

 private:
  std::vector<char> block_;
};

}  // namespace kiv::test
