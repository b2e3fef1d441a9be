#include "mus/page_encoding.h"

#include <algorithm>

#include "mus/format.h"

namespace kiv {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t shortestShortText = 8;
constexpr std::size_t shortestText = 24;

}  // namespace

std::size_t shortestTextOf(ItemType type) {
  if (type == ItemType::shortText) {
    return shortestShortText;
  }
  return type == ItemType::text ? shortestText : 0;
}

std::string padded(ItemType type, std::string_view text) {
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

}  // namespace kiv
