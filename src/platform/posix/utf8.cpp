#include "platform/posix/utf8.h"

#include <array>
#include <clocale>
#include <cstdint>
#include <cwctype>

#include <locale.h>  // NOLINT(modernize-deprecated-headers): newlocale and towupper_l are POSIX only

namespace kiv {
namespace {

/// One character: its code point and its number of bytes. A byte that begins none stands for itself.
struct Character {
  std::uint32_t code = 0;
  std::size_t bytes = 1;
  bool valid = false;
};

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

Character characterAt(std::string_view text, std::size_t at) {
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
  return isCharacterOf(code, bytes) ? Character{code, bytes, true} : Character{lead};
}

void append(std::string& text, std::uint32_t code) {
  if (code < 0x80U) {
    text += static_cast<char>(code);
    return;
  }
  if (code < 0x800U) {
    text += static_cast<char>(0xC0U | code >> 6U);
  } else {
    if (code < 0x10000U) {
      text += static_cast<char>(0xE0U | code >> 12U);
    } else {
      text += static_cast<char>(0xF0U | code >> 18U);
      text += static_cast<char>(0x80U | (code >> 12U & 0x3FU));
    }
    text += static_cast<char>(0x80U | (code >> 6U & 0x3FU));
  }
  text += static_cast<char>(0x80U | (code & 0x3FU));
}

/// The letters' table does not depend on the language that the user has set.
std::uint32_t capitalOf(std::uint32_t code) {
  static const locale_t letters = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  constexpr std::uint32_t microSign = 0xB5;
  constexpr std::uint32_t dotlessI = 0x131;
  constexpr std::uint32_t longS = 0x17F;
  // Characters whose capital is another alphabet's letter, or one that has a small letter of its own.
  if (code == microSign || code == dotlessI || code == longS || letters == nullptr) {
    return code;
  }
  return static_cast<std::uint32_t>(towupper_l(static_cast<std::wint_t>(code), letters));
}

}  // namespace

std::string upperCaseUtf8(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x80U) {
      result += static_cast<char>(byte >= 'a' && byte <= 'z' ? byte - 'a' + 'A' : byte);
      ++at;
      continue;
    }
    const Character character = characterAt(text, at);
    if (character.valid) {
      append(result, capitalOf(character.code));
    } else {
      result += text[at];
    }
    at += character.bytes;
  }
  return result;
}

std::size_t characterCountUtf8(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); ++count) {
    const bool plain = static_cast<unsigned char>(text[at]) < 0x80U;  // as nearly all are
    at += plain ? 1 : characterAt(text, at).bytes;
  }
  return count;
}

}  // namespace kiv
