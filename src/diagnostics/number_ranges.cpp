#include "diagnostics/number_ranges.h"

namespace kiv {

std::string joined(const std::vector<std::string>& words, std::size_t limit) {
  std::string text;
  for (std::size_t w = 0; w < words.size() && w < limit; ++w) {
    text += (w == 0 ? "" : ", ") + words[w];
  }
  return words.size() > limit ? text + " and " + std::to_string(words.size() - limit) + " more" : text;
}

std::vector<std::string> inRanges(const std::vector<int>& numbers, const std::function<std::string(int)>& wordOf) {
  constexpr std::size_t shortest = 3;
  std::vector<std::string> words;
  for (std::size_t first = 0; first < numbers.size();) {
    const int step = first + 1 < numbers.size() && numbers[first + 1] < numbers[first] ? -1 : 1;
    std::size_t end = first + 1;
    while (end < numbers.size() && numbers[end] == numbers[end - 1] + step) {
      ++end;
    }
    if (end - first >= shortest) {
      words.push_back(wordOf(numbers[first]) + " to " + wordOf(numbers[end - 1]));
      first = end;
    } else {
      words.push_back(wordOf(numbers[first++]));
    }
  }
  return words;
}

}  // namespace kiv
