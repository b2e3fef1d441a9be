#include "apps/kivsys/output/text_table.h"

#include <algorithm>

#include "platform/console/native_system.h"

namespace kiv {
namespace {

bool beginsCharacter(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

std::vector<std::size_t> columnWidths(const std::vector<std::vector<std::string>>& rows) {
  std::vector<std::size_t> widths;
  for (const auto& row : rows) {
    widths.resize(std::max(widths.size(), row.size()));
    for (std::size_t c = 0; c < row.size(); ++c) {
      widths[c] = std::max(widths[c], widthOf(row[c]));
    }
  }
  return widths;
}

}  // namespace

std::size_t widthOf(const std::string& text) {
  const std::string characters = NativeSystem::toUtf8(text);
  return static_cast<std::size_t>(std::count_if(characters.begin(), characters.end(), beginsCharacter));
}

std::string shortened(const std::string& text, std::size_t columns) {
  constexpr std::size_t periods = 3;
  if (widthOf(text) <= columns || columns < periods) {
    return text;
  }
  const std::string characters = NativeSystem::toUtf8(text);
  std::size_t left = columns - periods;
  std::size_t end = 0;
  while (end < characters.size() && (left > 0 || !beginsCharacter(characters[end]))) {
    ++end;
    left -= end < characters.size() && beginsCharacter(characters[end]) ? 1U : 0U;
  }
  return NativeSystem::fromUtf8(characters.substr(0, end)) + "...";
}

std::string tableText(const std::vector<std::vector<std::string>>& rows, const std::set<std::size_t>& rightAligned) {
  const std::vector<std::size_t> widths = columnWidths(rows);
  std::string text;
  for (const auto& row : rows) {
    std::string line;
    for (std::size_t c = 0; c < row.size(); ++c) {
      const std::string blanks(widths[c] - widthOf(row[c]), ' ');
      line += (c == 0 ? "" : "  ") + (rightAligned.contains(c) ? blanks + row[c] : row[c] + blanks);
    }
    text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
  }
  return text;
}

}  // namespace kiv
