#include "drawing/svg.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>

namespace kiv {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

struct Character {
  std::uint32_t code = 0;
  std::size_t bytes = 0;
};

std::uint32_t byteAt(std::string_view text, std::size_t place) {
  return static_cast<unsigned char>(text[place]);
}

/// The UTF-8 character that the text begins with; nullopt when it begins with none.
std::optional<Character> firstCharacter(std::string_view text) {
  const std::uint32_t lead = byteAt(text, 0);
  if (lead < 0x80) {
    return Character{lead, 1};
  }
  const std::size_t bytes = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
  constexpr std::array<std::uint32_t, 5> lowest = {0, 0, 0x80, 0x800, 0x10000};
  if (lead < 0xC2 || lead > 0xF4 || text.size() < bytes) {
    return std::nullopt;
  }
  std::uint32_t code = lead & (0x7FU >> bytes);
  for (std::size_t i = 1; i < bytes; ++i) {
    if ((byteAt(text, i) & 0xC0U) != 0x80) {
      return std::nullopt;
    }
    code = code << 6U | (byteAt(text, i) & 0x3FU);
  }
  const bool valid = code >= lowest[bytes] && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
  return valid ? std::optional(Character{code, bytes}) : std::nullopt;
}

bool allowedInXml(std::uint32_t code) {
  return code >= 0x20 ? code != 0xFFFE && code != 0xFFFF : code == '\t' || code == '\n' || code == '\r';
}

std::string_view escaped(std::uint32_t code) {
  switch (code) {
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '&':
      return "&amp;";
    case '"':
      return "&quot;";
    default:
      return "";
  }
}

}  // namespace

std::string svgNumber(double number) {
  if (!std::isfinite(number)) {
    return "0";
  }
  constexpr int decimals = 2;
  std::array<char, 400> digits{};
  const auto result =
      std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::fixed, decimals);
  std::string text(digits.data(), result.ptr);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') {
    text.pop_back();
  }
  return text == "-0" ? "0" : text;
}

std::string svgText(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const auto character = firstCharacter(text);
    const std::size_t bytes = character ? character->bytes : 1;
    if (!character || !allowedInXml(character->code)) {
      result += replacement;
    } else if (const auto markup = escaped(character->code); !markup.empty()) {
      result += markup;
    } else {
      result += text.substr(0, bytes);
    }
    text.remove_prefix(bytes);
  }
  return result;
}

std::size_t characterBytes(std::string_view text) {
  const auto character = firstCharacter(text);
  return character ? character->bytes : 1;
}

void SvgWriter::begin(std::string_view element, SvgAttributes attributes) {
  markup_ += "<" + std::string(element);
  for (const SvgAttribute& attribute : attributes) {
    markup_ += " " + std::string(attribute.name) + "=\"" + attribute.value + "\"";
  }
}

void SvgWriter::open(std::string_view element, SvgAttributes attributes) {
  begin(element, attributes);
  markup_ += ">\n";
  open_.emplace_back(element);
}

void SvgWriter::close() {
  markup_ += "</" + open_.back() + ">\n";
  open_.pop_back();
}

void SvgWriter::leaf(std::string_view element, SvgAttributes attributes) {
  begin(element, attributes);
  markup_ += "/>\n";
}

void SvgWriter::text(std::string_view element, SvgAttributes attributes, std::string_view content) {
  begin(element, attributes);
  markup_ += ">" + svgText(content) + "</" + std::string(element) + ">\n";
}

}  // namespace kiv
