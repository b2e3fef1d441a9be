#include "drawing/text_width.h"

#include <vector>

#include "drawing/svg.h"

namespace kiv {
namespace {

constexpr std::string_view ellipsis = "\xE2\x80\xA6";
constexpr double ellipsisWidth = 1;

/// The width of a character that is whole in the text.
double widthOfCharacter(std::string_view character) {
  constexpr double narrow = 0.42;
  constexpr double usual = 0.66;
  constexpr double capital = 0.85;
  constexpr double wide = 1.05;
  if (character.size() > 1) {
    // Two bytes are letters of an alphabet, three and more may be as wide as high.
    return character.size() == 2 ? capital : wide;
  }
  const char c = character.front();
  if (std::string_view(" .,:;'!|()[]iljtfrI-").find(c) != std::string_view::npos) {
    return narrow;
  }
  if (std::string_view("mwMW@%&+<>=~").find(c) != std::string_view::npos) {
    return wide;
  }
  return (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80 ? capital : usual;
}

std::vector<std::string_view> charactersOf(std::string_view text) {
  std::vector<std::string_view> characters;
  while (!text.empty()) {
    const std::size_t bytes = characterBytes(text);
    characters.push_back(text.substr(0, bytes));
    text.remove_prefix(bytes);
  }
  return characters;
}

/// How many bytes of the characters fit.
template <typename Iterator>
std::size_t fittingBytes(Iterator first, Iterator end, double width) {
  std::size_t bytes = 0;
  for (; first != end && (width -= widthOfCharacter(*first)) >= 0; ++first) {
    bytes += first->size();
  }
  return bytes;
}

}  // namespace

double widthOfText(std::string_view text) {
  double width = 0;
  for (const std::string_view character : charactersOf(text)) {
    width += widthOfCharacter(character);
  }
  return width;
}

std::string cutAtEnd(std::string_view text, double width) {
  if (widthOfText(text) <= width) {
    return std::string(text);
  }
  const auto characters = charactersOf(text);
  const std::size_t bytes = fittingBytes(characters.begin(), characters.end(), width - ellipsisWidth);
  return std::string(text.substr(0, bytes)) + std::string(ellipsis);
}

std::string cutAtFront(std::string_view text, double width) {
  if (widthOfText(text) <= width) {
    return std::string(text);
  }
  const auto characters = charactersOf(text);
  const std::size_t bytes = fittingBytes(characters.rbegin(), characters.rend(), width - ellipsisWidth);
  return std::string(ellipsis) + std::string(text.substr(text.size() - bytes));
}

}  // namespace kiv
