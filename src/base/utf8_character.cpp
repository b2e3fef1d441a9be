#include "base/utf8_character.h"

#include <array>

namespace kiv {
namespace {

bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::size_t expectedBytes(unsigned char lead) {
  if (lead < 0x80U) {
    return 1;
  }
  if (lead >= 0xC2U && lead < 0xE0U) {
    return 2;
  }
  if (lead >= 0xE0U && lead < 0xF0U) {
    return 3;
  }
  return lead >= 0xF0U && lead < 0xF5U ? 4 : 0;
}

/// Whether the code point is a character of exactly this number of bytes.
bool isCharacterOf(std::uint32_t code, std::size_t bytes) {
  constexpr std::array<std::uint32_t, 5> first = {0, 0, 0x80, 0x800, 0x10000};
  constexpr std::uint32_t last = 0x10FFFF;
  const bool surrogate = code >= 0xD800 && code < 0xE000;
  return code >= first[bytes] && code <= last && !surrogate;
}

}  // namespace

Utf8Character utf8CharacterAt(std::string_view text, std::size_t at) {
  constexpr unsigned payloadBits = 6;
  const auto lead = static_cast<unsigned char>(text[at]);
  if (lead < 0x80U) {
    return {lead, 1, true};
  }
  const std::size_t bytes = expectedBytes(lead);
  if (bytes == 0 || bytes > text.size() - at) {
    return {lead};
  }
  std::uint32_t code = bytes == 1 ? lead : lead & (0x7FU >> bytes);
  for (std::size_t i = 1; i < bytes; ++i) {
    if (!isContinuation(text[at + i])) {
      return {lead};
    }
    code = code << payloadBits | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
  }
  return isCharacterOf(code, bytes) ? Utf8Character{code, bytes, true} : Utf8Character{lead};
}

}  // namespace kiv
