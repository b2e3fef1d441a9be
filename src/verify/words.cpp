#include "verify/words.h"

#include <bit>
#include <cstdint>

namespace kiv::proof {

void appendWords(std::span<const float> numbers, std::string& bytes) {
  const std::size_t before = bytes.size();
  bytes.resize(before + wordSize * numbers.size());
  char* to = bytes.data() + before;
  for (const float number : numbers) {
    const auto bits = std::bit_cast<std::uint32_t>(number);
    for (std::size_t i = 0; i < wordSize; ++i) {
      to[i] = static_cast<char>(static_cast<unsigned char>(bits >> 8 * i & 0xFFU));
    }
    to += wordSize;
  }
}

void appendWord(float number, std::string& bytes) {
  appendWords({&number, 1}, bytes);
}

}  // namespace kiv::proof
