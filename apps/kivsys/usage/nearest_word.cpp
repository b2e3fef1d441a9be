#include "apps/kivsys/usage/nearest_word.h"

#include <algorithm>

namespace kiv {
namespace {

std::string smallLetters(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return text;
}

}  // namespace

std::size_t editDistance(std::string_view from, std::string_view to) {
  const std::size_t columns = to.size() + 1;
  std::vector<std::size_t> distances((from.size() + 1) * columns);
  for (std::size_t i = 0; i <= from.size(); ++i) {
    for (std::size_t j = 0; j < columns; ++j) {
      std::size_t& least = distances[i * columns + j];
      if (i == 0 || j == 0) {
        least = i + j;
        continue;
      }
      const std::size_t replaced = from[i - 1] == to[j - 1] ? 0 : 1;
      least = std::min({distances[(i - 1) * columns + j] + 1, distances[i * columns + j - 1] + 1,
                        distances[(i - 1) * columns + j - 1] + replaced});
      if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1]) {
        least = std::min(least, distances[(i - 2) * columns + j - 2] + 1);
      }
    }
  }
  return distances.back();
}

std::optional<std::string> nearestWord(const std::string& typed, const std::vector<std::string>& words) {
  constexpr std::size_t longest = 64;  // no word is nearly as long, and the distance takes the product of both
  if (typed.size() > longest) {
    return std::nullopt;
  }
  std::size_t least = std::max<std::size_t>(1, typed.size() / 3);
  std::optional<std::string> nearest;
  for (const std::string& word : words) {
    const std::size_t distance = editDistance(smallLetters(typed), smallLetters(word));
    if (distance < word.size() && (distance < least || (distance == least && !nearest))) {
      least = distance;
      nearest = word;
    }
  }
  return nearest;
}

}  // namespace kiv
