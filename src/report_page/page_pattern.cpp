#include "report_page/page_pattern.h"

#include <algorithm>
#include <cstddef>

namespace kiv::report {

std::optional<std::string> patternFor(const std::vector<std::string>& names, const std::vector<std::string>& folder) {
  if (names.empty()) {
    return std::nullopt;
  }
  const auto [first, last] = std::minmax_element(names.begin(), names.end());
  const auto differing = std::mismatch(first->begin(), first->end(), last->begin(), last->end()).first;
  const auto same = static_cast<std::size_t>(differing - first->begin());
  const std::string prefix = first->substr(0, std::min(first->find_first_of("0123456789"), same));
  const std::string suffix = first->substr(std::min(first->rfind('.'), first->size()));
  const auto matching = std::count_if(folder.begin(), folder.end(), [&](const std::string& name) {
    return name.starts_with(prefix) && name.ends_with(suffix);
  });
  const bool isExact = !prefix.empty() && static_cast<std::size_t>(matching) == names.size();
  return isExact ? std::optional(prefix + "*" + suffix) : std::nullopt;
}

}  // namespace kiv::report
