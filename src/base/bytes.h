#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

namespace kiv {

/// A word of a page file: a little-endian single-precision float, or four bytes of text.
constexpr std::size_t bytesPerWord = 4;

/// Writes the four bytes of a little-endian float to a buffer of at least that size.
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

/// Writes the words of several floats one after the other to a buffer of at least that size.
template <std::size_t count>
void putWords(std::span<const float, count> numbers, char* place) {
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(place, numbers.data(), numbers.size_bytes());
    return;
  }
  for (const float number : numbers) {
    putWord(number, place);
    place += bytesPerWord;
  }
}

/// The four bytes of a little-endian float.
inline std::string wordBytes(float number) {
  std::string bytes(bytesPerWord, '\0');
  putWord(number, bytes.data());
  return bytes;
}

}  // namespace kiv
