#include "mus/page_words.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "mus/format.h"

namespace kiv {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t shortestShortText = 8;
constexpr std::size_t shortestText = 24;

}  // namespace

const std::vector<ItemWord>& itemWords() {
  static const std::vector<ItemWord> words = {
      {"note", type::note, {{"height", par::height}, {"duration", par::duration}}},
      {"rest",
       type::rest,
       {{"height", par::height},
        {"kind", par::kind},
        {"form", par::restForm},
        {"duration", par::duration},
        {"cue", par::cuedInstrument}}},
      {"clef", type::clef, {{"height", par::height}, {"kind", par::kind}}},
      {"staff", type::staff, {{"size", par::size}, {"lines", par::lines}, {"instrument", par::instrument}}},
      {"shorttext", type::shortText, {}},
      {"barline", type::barline, {{"spans", par::spannedStaves}, {"kind", par::kind}}},
      {"text", type::text, {}},
      {"countedtext", type::countedText, {{"characters", par::textLength}}},
      {"keysignature", type::keySignature, {{"key", par::key}, {"type", par::keyType}}},
      {"timesignature", type::timeSignature, {{"upper", par::upperNumber}, {"lower", par::lowerNumber}}},
  };
  return words;
}

const ItemWord* itemWordOf(float type) {
  const auto& words = itemWords();
  const auto found = std::find_if(words.begin(), words.end(), [&](const ItemWord& w) { return w.type == type; });
  return found == words.end() ? nullptr : &*found;
}

const ItemWord* itemWordNamed(std::string_view word) {
  const auto& words = itemWords();
  const auto found = std::find_if(words.begin(), words.end(), [&](const ItemWord& w) { return w.word == word; });
  return found == words.end() ? nullptr : &*found;
}

std::size_t shortestTextOf(float type) {
  if (type == type::shortText) {
    return shortestShortText;
  }
  return type == type::text ? shortestText : 0;
}

std::string padded(float type, std::string_view text) {
  const std::size_t size = std::max(text.size(), shortestTextOf(type));
  std::string result(text);
  result.resize((size + bytesPerWord - 1) / bytesPerWord * bytesPerWord, ' ');
  return result;
}

std::string_view standardTrailer() {
  return "\x20\x20\x00\x00"
         "\x00\x00\x00\x00"
         "\x00\x00\x40\x40"
         "\x00\x00\x00\x00"
         "\x00\x00\xA0\x40"
         "\x00\x3C\x1C\xC6"sv;
}

std::string wordBytes(float number) {
  std::string bytes(bytesPerWord, '\0');
  putWord(number, bytes.data());
  return bytes;
}

std::string exactNumber(float number) {
  std::array<char, 32> digits{};
  if (!std::isfinite(number)) {
    const auto length = std::snprintf(digits.data(), digits.size(), "0x%08X", std::bit_cast<std::uint32_t>(number));
    return {digits.data(), static_cast<std::size_t>(length)};
  }
  return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

bool readExactNumber(std::string_view word, float& number) {
  constexpr int hexadecimal = 16;
  if (word.starts_with("0x")) {
    std::uint32_t bits = 0;
    const auto result = std::from_chars(word.data() + 2, word.data() + word.size(), bits, hexadecimal);
    number = std::bit_cast<float>(bits);
    return result.ec == std::errc() && result.ptr == word.data() + word.size();
  }
  const auto result = std::from_chars(word.data(), word.data() + word.size(), number);
  return result.ec == std::errc() && result.ptr == word.data() + word.size() && std::isfinite(number);
}

}  // namespace kiv
