#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "mus/format.h"

namespace kiv {

/// A word of the page text for one parameter of an item.
struct ParameterWord {
  std::string_view word;
  int parameter = 0;
};

/// A word of the page text for one type of item, and its words for parameters beyond P2 and P3.
struct ItemWord {
  std::string_view word;
  float type = 0;
  std::vector<ParameterWord> parameters;
};

/// The words for the types that have one.
const std::vector<ItemWord>& itemWords();
/// Null when the type, or the word, is none of them.
const ItemWord* itemWordOf(float type);
const ItemWord* itemWordNamed(std::string_view word);

/// How many characters a text item of the type is given at least.
std::size_t shortestTextOf(float type);

/// The text with as many blanks as a text item of the type is given at least, and up to whole chunks of 4.
std::string padded(float type, std::string_view text);

/// The standard trailer, byte for byte.
std::string_view standardTrailer();

/// The four bytes of a little-endian float.
std::string wordBytes(float number);
/// The same, put where there is room for four characters.
inline void putWord(float number, char* place) {
  if constexpr (std::endian::native == std::endian::little) {  // not every compiler sees that it is one store
    std::memcpy(place, &number, bytesPerWord);
    return;
  }
  const auto bits = std::bit_cast<std::uint32_t>(number);
  for (std::size_t i = 0; i < bytesPerWord; ++i) {
    place[i] = static_cast<char>(bits >> (8U * i) & 0xFFU);
  }
}

/// The shortest decimal number that reads back as the same float; what decimal numbers cannot say, and that is NaNs
/// and infinities, is written by its bits, as in 0x7FC00000.
std::string exactNumber(float number);
/// Reads what exactNumber wrote. False when the word is no such number.
bool readExactNumber(std::string_view word, float& number);

}  // namespace kiv
