#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv {

/// One character of a UTF-8 text: its code point and its number of bytes. A byte that begins none stands for itself.
struct Utf8Character {
  std::uint32_t code = 0;
  std::size_t bytes = 1;
  bool valid = false;
};

/// The character that begins at this byte, which must be one of the text's.
Utf8Character utf8CharacterAt(std::string_view text, std::size_t at);

}  // namespace kiv
