#include "base/csv_line.h"

#include <algorithm>
#include <string_view>

namespace kiv {
namespace {

std::string quoted(const std::string& cell) {
  std::string text = "\"";
  for (const char c : cell) {
    text += c == '"' ? std::string("\"\"") : std::string(1, c);
  }
  return text + '"';
}

}  // namespace

std::string cellText(const std::string& text) {
  constexpr std::string_view formulaStarts = "=+-@\t\r";
  const std::size_t first = std::min(text.find_first_not_of('\''), text.size());
  const bool isFormula = first < text.size() && formulaStarts.find(text[first]) != std::string_view::npos;
  return isFormula ? "'" + text : text;
}

std::string csvLine(const std::vector<std::string>& cells) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const bool isPlain = cells[i].find_first_of(",\"\r\n") == std::string::npos;
    line += (i == 0 ? "" : ",") + (isPlain ? cells[i] : quoted(cells[i]));
  }
  return line + "\n";
}

}  // namespace kiv
