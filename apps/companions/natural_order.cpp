#include "apps/companions/natural_order.h"

#include <algorithm>
#include <compare>

namespace kiv {
namespace {

bool isDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

/// Cuts off the digits at the front of the text and returns them without leading zeros: a number that no type holds can
/// be compared, too.
std::wstring_view cutNumber(std::wstring_view& text) {
  const auto length = static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
  std::wstring_view number = text.substr(0, length);
  text.remove_prefix(length);
  number.remove_prefix(std::min(number.find_first_not_of(L'0'), number.size()));
  return number;
}

std::strong_ordering compareNumbers(std::wstring_view a, std::wstring_view b) {
  const auto byLength = a.size() <=> b.size();
  return std::is_neq(byLength) ? byLength : a <=> b;
}

std::strong_ordering compare(std::wstring_view a, std::wstring_view b) {
  while (!a.empty() && !b.empty()) {
    std::strong_ordering order = a.front() <=> b.front();
    if (isDigit(a.front()) && isDigit(b.front())) {
      order = compareNumbers(cutNumber(a), cutNumber(b));
    } else {
      a.remove_prefix(1);
      b.remove_prefix(1);
    }
    if (std::is_neq(order)) {
      return order;
    }
  }
  return a.size() <=> b.size();
}

struct Path {
  std::wstring_view folder;
  std::wstring_view stem;
  std::wstring_view suffix;
};

/// The parts are compared one by one, so that the period or a backslash does not count as a character of the name.
Path partsOf(std::wstring_view path) {
  const std::size_t start = path.rfind(L'\\') + 1;
  const std::wstring_view name = path.substr(start);
  const std::size_t period = std::min(name.rfind(L'.'), name.size());
  return {path.substr(0, start), name.substr(0, period), name.substr(period)};
}

}  // namespace

bool comesBefore(std::wstring_view a, std::wstring_view b) {
  const Path first = partsOf(a);
  const Path second = partsOf(b);
  std::strong_ordering order = compare(first.folder, second.folder);
  if (std::is_eq(order)) {
    order = compare(first.stem, second.stem);
  }
  if (std::is_eq(order)) {
    order = compare(first.suffix, second.suffix);
  }
  // What differs in leading zeros only is not the same file.
  return std::is_neq(order) ? std::is_lt(order) : a < b;
}

}  // namespace kiv
