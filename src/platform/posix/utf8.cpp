#include "platform/posix/utf8.h"

#include <clocale>
#include <cstdint>
#include <cwctype>

#include <locale.h>  // NOLINT(modernize-deprecated-headers): newlocale and towupper_l are POSIX only

#include "base/utf8_character.h"

namespace kiv {
namespace {

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
    const Utf8Character character = utf8CharacterAt(text, at);
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
    at += plain ? 1 : utf8CharacterAt(text, at).bytes;
  }
  return count;
}

}  // namespace kiv
