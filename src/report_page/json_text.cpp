#include "report_page/json_text.h"

#include <array>
#include <utility>

#include "base/utf8_character.h"

namespace kiv::report {
namespace {

/// \u and four digits.
std::string codeUnit(std::uint32_t code) {
  constexpr std::string_view digits = "0123456789abcdef";
  constexpr unsigned highestShift = 12;
  constexpr unsigned bitsPerDigit = 4;
  constexpr std::uint32_t lowest = 0xF;
  std::string text = "\\u";
  for (unsigned shift = highestShift + bitsPerDigit; shift > 0;) {
    shift -= bitsPerDigit;
    text += digits[code >> shift & lowest];
  }
  return text;
}

/// Whether the character could end the string, its line, or the element of the page that it is in.
bool isEscaped(std::uint32_t code) {
  constexpr std::uint32_t firstPrintable = 0x20;
  constexpr std::uint32_t lineSeparator = 0x2028;
  constexpr std::uint32_t paragraphSeparator = 0x2029;
  constexpr std::uint32_t deleteCharacter = 0x7F;
  return code < firstPrintable || code == '"' || code == '\\' || code == '<' || code == '>' || code == '&' ||
         code == deleteCharacter || code == lineSeparator || code == paragraphSeparator;
}

}  // namespace

std::string jsonString(std::string_view text) {
  std::string json = "\"";
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Character character = utf8CharacterAt(text, at);
    if (!character.valid) {
      json += "\xEF\xBF\xBD";
    } else if (isEscaped(character.code)) {
      json += codeUnit(character.code);
    } else {
      json += text.substr(at, character.bytes);
    }
    at += character.bytes;
  }
  return json + "\"";
}

std::string& JsonArray::next() {
  json_ += std::exchange(isEmpty_, false) ? "" : ",";
  return json_;
}

JsonArray& JsonArray::add(std::string_view json) {
  next() += json;
  return *this;
}

std::string JsonArray::text() {
  end();
  return std::move(own_);
}

std::string& JsonObject::member(std::string_view name) {
  json_ += std::exchange(isEmpty_, false) ? "\"" : ",\"";
  return json_.append(name).append("\":");
}

JsonObject& JsonObject::add(std::string_view name, std::string_view json) {
  member(name) += json;
  return *this;
}

std::string JsonObject::text() {
  end();
  return std::move(own_);
}

std::string runLengths(const std::vector<std::int64_t>& numbers) {
  JsonArray runs;
  for (std::size_t first = 0; first < numbers.size();) {
    std::size_t end = first + 1;
    while (end < numbers.size() && numbers[end] == numbers[first]) {
      ++end;
    }
    runs.add(numbers[first]).add(static_cast<std::int64_t>(end - first));
    first = end;
  }
  return runs.text();
}

}  // namespace kiv::report
