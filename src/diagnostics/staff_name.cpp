#include "diagnostics/staff_name.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>

#include "diagnostics/instrument_names.h"

namespace kiv {
namespace {

// In staff steps from the middle of the staff. The names of three lines stand beside it; a tempo, which the top staff
// of a system may have, stands above.
constexpr float highestBeside = 6;
constexpr float lowestBeside = -7;
constexpr float farthest = 30;

bool hasLetter(const std::string& text) {
  return std::any_of(text.begin(), text.end(), isNameLetter);
}

bool isBlank(char c) {
  return (c >= 0 && c <= ' ') || c == '\x7F';
}

float middleOf(float lines) {
  constexpr float mostLines = 12;
  constexpr float usual = 5;
  const bool known = lines >= 1 && lines <= mostLines;
  return (known ? lines : usual) - 1;
}

bool isSame(const NamePart& a, const NamePart& b) {
  return a.position == b.position && a.height == b.height && a.text == b.text;
}

/// From the top line down, and from left to right on a line. Heights that differ by less than a step are of one line.
void sortAsRead(std::vector<NamePart>& parts) {
  std::stable_sort(parts.begin(), parts.end(),
                   [](const NamePart& a, const NamePart& b) { return a.height > b.height; });
  for (auto line = parts.begin(); line != parts.end();) {
    const auto next = std::find_if(line, parts.end(), [&](const NamePart& p) { return p.height <= line->height - 1; });
    std::stable_sort(line, next, [](const NamePart& a, const NamePart& b) { return a.position < b.position; });
    line = next;
  }
  parts.erase(std::unique(parts.begin(), parts.end(), isSame), parts.end());
}

/// Appends a part; a word that was divided at the end of a line is put together again.
void append(std::string& name, const std::string& text) {
  const bool isDivided = name.size() > 1 && name.ends_with('-') && !isBlank(name[name.size() - 2]) &&
                         text.front() >= 'a' && text.front() <= 'z';
  if (isDivided) {
    name.pop_back();
  } else if (!name.empty()) {
    name += ' ';
  }
  name += text;
}

std::string nameOf(const std::vector<NamePart>& all, const std::function<bool(float height)>& isThere) {
  std::vector<NamePart> parts;
  std::copy_if(all.begin(), all.end(), std::back_inserter(parts), [&](const NamePart& p) { return isThere(p.height); });
  if (parts.empty()) {
    return "";
  }
  sortAsRead(parts);
  std::string name;
  for (const NamePart& part : parts) {
    if (!name.empty() || hasLetter(part.text)) {
      append(name, part.text);
    }
    if (name.size() > longestInstrumentName) {
      return "";
    }
  }
  return name;
}

}  // namespace

std::optional<NamePart> namePart(const Item& item) {
  const auto first = std::find_if_not(item.text.begin(), item.text.end(), isBlank);
  const auto last = std::find_if_not(item.text.rbegin(), item.text.rend(), isBlank).base();
  if (first >= last || static_cast<std::size_t>(last - first) > longestInstrumentName ||
      std::isnan(item[par::position]) || std::isnan(item[par::height])) {
    return std::nullopt;
  }
  return NamePart{item[par::position], item[par::height], std::string(first, last)};
}

NamesOfStaff namesOf(float lines, const std::vector<NamePart>& parts) {
  const float middle = middleOf(lines);
  const float top = middle + highestBeside;
  const float bottom = middle + lowestBeside;
  return {nameOf(parts, [&](float height) { return height >= bottom && height <= top; }),
          nameOf(parts, [&](float height) { return height > top && height <= middle + farthest; }),
          nameOf(parts, [&](float height) { return height < bottom && height >= middle - farthest; })};
}

}  // namespace kiv
