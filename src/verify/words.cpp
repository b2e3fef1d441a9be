#include "verify/words.h"

#include <bit>
#include <cstdint>

namespace kiv::proof {

std::string wordOf(float number) {
  constexpr std::uint32_t valuesOfAByte = 256;
  auto bits = std::bit_cast<std::uint32_t>(number);
  std::string word;
  for (std::size_t i = 0; i < wordSize; ++i) {
    word += static_cast<char>(static_cast<unsigned char>(bits % valuesOfAByte));
    bits /= valuesOfAByte;
  }
  return word;
}

}  // namespace kiv::proof
