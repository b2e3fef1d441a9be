#include "verify/words.h"

#include <array>
#include <bit>
#include <cstdint>

namespace kiv::proof {

void appendWord(float number, std::string& bytes) {
  const auto bits = std::bit_cast<std::uint32_t>(number);
  std::array<char, wordSize> word{};
  for (std::size_t i = 0; i < word.size(); ++i) {
    word[i] = static_cast<char>(static_cast<unsigned char>(bits >> 8 * i & 0xFFU));
  }
  bytes.append(word.data(), word.size());
}

}  // namespace kiv::proof
