#include "survey/number_gaps.h"

#include <optional>

#include "input/file_names.h"

namespace kiv {
namespace {

std::optional<unsigned long> numberOf(Machine& machine, const std::string& file) {
  constexpr std::size_t mostDigits = 9;  // longer ones are no counts of pages
  const std::string digits = extractPartNumb(machine, file);
  return digits.empty() || digits.size() > mostDigits ? std::nullopt : std::optional(std::stoul(digits));
}

}  // namespace

std::vector<std::string> numberGaps(Machine& machine, const std::vector<std::string>& files) {
  std::vector<std::string> gaps;
  for (std::size_t f = 1; f < files.size(); ++f) {
    const auto before = numberOf(machine, files[f - 1]);
    const auto after = numberOf(machine, files[f]);
    const bool isGap = before && after && *after > *before + 1 &&
                       extractPartName(machine, files[f - 1]) == extractPartName(machine, files[f]);
    if (isGap) {
      const std::string first = std::to_string(*before + 1);
      const std::string last = std::to_string(*after - 1);
      std::string& words = gaps.emplace_back(first == last ? "no page " : "no pages ");
      words.append(first).append(first == last ? "" : " to " + last);
      words.append(" between ").append(withoutPath(machine, files[f - 1]));
      words.append(" and ").append(withoutPath(machine, files[f]));
    }
  }
  return gaps;
}

}  // namespace kiv
