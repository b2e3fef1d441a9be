#include "platform/console/printable.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "base/utf8_character.h"
#include "platform/console/native_system.h"

namespace kiv {
namespace {

constexpr std::uint32_t firstPrintable = 0x20;
constexpr std::uint32_t deleteCharacter = 0x7F;
constexpr std::uint32_t firstBeyondControls = 0xA0;
constexpr std::uint32_t largestOfFourDigits = 0xFFFF;

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

/// What ends lines, turns the direction of writing, or cannot be seen, so that two names look alike. The joiners
/// (U+200C and U+200D) stay: some languages are not written without them.
constexpr std::array<Range, 15> unsafe = {{{0xAD, 0xAD},
                                           {0x61C, 0x61C},
                                           {0x115F, 0x1160},
                                           {0x17B4, 0x17B5},
                                           {0x180E, 0x180E},
                                           {0x200B, 0x200B},
                                           {0x200E, 0x200F},
                                           {0x2028, 0x202E},
                                           {0x2060, 0x206F},
                                           {0x2800, 0x2800},
                                           {0x3164, 0x3164},
                                           {0xFEFF, 0xFEFF},
                                           {0xFFA0, 0xFFA0},
                                           {0xFFF9, 0xFFFB},
                                           {0xE0000, 0xE0FFF}}};

bool isSafe(std::uint32_t code) {
  if (code < firstPrintable || (code >= deleteCharacter && code < firstBeyondControls)) {
    return false;
  }
  return std::none_of(unsafe.begin(), unsafe.end(),
                      [&](const Range& range) { return code >= range.first && code <= range.last; });
}

std::string hexadecimal(std::uint32_t number, int digits) {
  constexpr unsigned bitsPerDigit = 4;
  constexpr std::uint32_t lowest = 0xF;
  std::string text(static_cast<std::size_t>(digits), '0');
  for (auto digit = text.rbegin(); digit != text.rend(); ++digit, number >>= bitsPerDigit) {
    *digit = "0123456789ABCDEF"[number & lowest];
  }
  return text;
}

std::string escaped(const Utf8Character& character) {
  switch (character.code) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      break;
  }
  const bool isByte = !character.valid || character.code <= deleteCharacter;
  if (isByte) {
    return "\\x" + hexadecimal(character.code, 2);
  }
  return character.code > largestOfFourDigits ? "\\U" + hexadecimal(character.code, 8)
                                              : "\\u" + hexadecimal(character.code, 4);
}

/// Nearly all text: every code page that a program can run in has ASCII as it is.
bool isPlain(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

std::string printableUtf8(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character character = utf8CharacterAt(text, at);
    if (character.valid && isSafe(character.code)) {
      result += text.substr(at, character.bytes);
    } else {
      result += escaped(character);
    }
    at += character.bytes;
  }
  return result;
}

std::string printable(std::string_view text) {
  if (isPlain(text)) {
    return std::string(text);
  }
  const std::string utf8 = NativeSystem::toUtf8(text);
  const std::string escapes = printableUtf8(utf8);
  return escapes == utf8 ? std::string(text) : NativeSystem::fromUtf8(escapes);
}

std::string printableLines(std::string_view text) {
  std::string lines;
  std::size_t start = 0;
  for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n', start)) {
    const bool afterReturn = end > start && text[end - 1] == '\r';
    lines += printable(text.substr(start, end - start - (afterReturn ? 1 : 0)));
    lines += afterReturn ? "\r\n" : "\n";
    start = end + 1;
  }
  return lines + printable(text.substr(start));
}

}  // namespace kiv
