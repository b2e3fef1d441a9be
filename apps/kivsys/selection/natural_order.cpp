#include "apps/kivsys/selection/natural_order.h"

#include <algorithm>

#include "base/number.h"

namespace kiv {
namespace {

/// The number at the start of a text, without its leading zeros; it is removed from the text.
std::string_view removeNumber(std::string_view& text) {
  const auto end = static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
  std::string_view number = text.substr(0, end);
  text.remove_prefix(end);
  number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
  return number;
}

}  // namespace

bool comesBefore(std::string_view name, std::string_view other) {
  std::string_view a = name;
  std::string_view b = other;
  while (!a.empty() && !b.empty()) {
    if (isDigit(a.front()) && isDigit(b.front())) {
      const std::string_view first = removeNumber(a);
      const std::string_view second = removeNumber(b);
      if (first != second) {
        return first.size() == second.size() ? first < second : first.size() < second.size();
      }
    } else if (a.front() != b.front()) {
      return a.substr(0, 1) < b.substr(0, 1);
    } else {
      a.remove_prefix(1);
      b.remove_prefix(1);
    }
  }
  if (a.empty() != b.empty()) {
    return a.empty();
  }
  return name.size() == other.size() ? name < other : name.size() < other.size();  // with fewer zeros first
}

}  // namespace kiv
