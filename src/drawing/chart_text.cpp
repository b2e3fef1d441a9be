#include <algorithm>
#include <array>

#include "drawing/chart_drawings.h"

namespace kiv {
namespace {

constexpr std::size_t shortestLabel = 8;
constexpr std::size_t idWidth = 6;         // with the blank before it
constexpr std::size_t widthForNames = 60;  // of the narrowest line with names on it
constexpr std::size_t fewestSystems = 8;   // on a line, however narrow

struct Mark {
  Presence presence;
  char character;
  const char* color;
};

constexpr std::array<Mark, presenceKinds> marks = {{{Presence::present, '#', "\x1B[32m"},
                                                    {Presence::missing, '.', "\x1B[33m"},
                                                    {Presence::duplicate, 'D', "\x1B[31m"},
                                                    {Presence::zeroId, '0', "\x1B[31m"}}};

std::string marked(Presence presence, bool color) {
  const auto& mark = *std::find_if(marks.begin(), marks.end(), [&](const Mark& m) { return m.presence == presence; });
  const std::string character(1, mark.character);
  return color ? mark.color + character + "\x1B[0m" : character;
}

std::string rightAligned(const std::string& word, std::size_t width) {
  return word.size() < width ? std::string(width - word.size(), ' ') + word : word;
}

/// Some neighboring systems, a column of two characters each.
struct Block {
  std::size_t first = 0;
  std::size_t end = 0;
  std::size_t labelWidth = shortestLabel;  ///< left of the systems
};

/// A line of numbers above the columns. One that would touch the number before it, or exceed the line, is left out.
class NumberLine {
 public:
  NumberLine(const std::string& label, Block block)
      : line_(rightAligned(label, block.labelWidth) + " "),
        start_(block.labelWidth + 2),
        end_(start_ + 2 * (block.end - block.first)) {}

  void at(std::size_t column, const std::string& number) {
    const std::size_t position = start_ + 2 * column;
    if (position > line_.size() && (column == 0 || position + number.size() <= end_)) {
      line_.append(position - line_.size(), ' ');
      line_ += number;
    }
  }
  std::string text() const { return line_ + "\n"; }

 private:
  std::string line_;
  std::size_t start_;
  std::size_t end_;
};

std::string heads(const Chart& chart, Block block) {
  NumberLine pages("page", block);
  NumberLine files("files", block);
  NumberLine systems("system", block);
  for (std::size_t i = block.first; i < block.end; ++i) {
    const ChartPage& page = chart.pages[chart.systems[i].page];
    if (i == block.first || chart.startsPage(i)) {
      pages.at(i - block.first, std::to_string(chart.systems[i].page + 1));
      if (page.files > 1) {
        files.at(i - block.first, std::to_string(page.files));
      }
    }
    systems.at(i - block.first, std::to_string(i + 1));
  }
  const bool multifile =
      std::any_of(chart.pages.begin(), chart.pages.end(), [](const ChartPage& page) { return page.files > 1; });
  return pages.text() + (multifile ? files.text() : "") + systems.text();
}

/// The name, where the labels have the width for names, and the identifier.
std::string labelOf(const Chart& chart, std::int16_t instrument, std::size_t width) {
  const std::string id = std::to_string(instrument);
  const auto name = chart.names.find(instrument);
  if (width == shortestLabel || name == chart.names.end()) {
    return rightAligned(id, width);
  }
  return name->second.text + rightAligned(id, width - name->second.columns);
}

std::string row(const Chart& chart, Block block, std::size_t instrument, bool color) {
  std::string line = labelOf(chart, chart.instruments[instrument], block.labelWidth) + " ";
  for (std::size_t i = block.first; i < block.end; ++i) {
    line += i == block.first || chart.startsPage(i) ? "|" : " ";
    line += marked(chart.systems[i].cells[instrument], color);
  }
  return line + "|\n";
}

/// The words in lines of the width.
std::string wrapped(const std::vector<std::string>& words, std::size_t width) {
  std::string lines;
  std::string line;
  for (const std::string& word : words) {
    if (!line.empty() && line.size() + 2 + word.size() > width) {
      lines += line + "\n";
      line.clear();
    }
    line += (line.empty() ? "" : "  ") + word;
  }
  return line.empty() ? lines : lines + line + "\n";
}

std::string legend(const Chart& chart, const TextStyle& style) {
  std::string text;
  for (const Mark& mark : marks) {
    const bool always = mark.presence == Presence::present || mark.presence == Presence::missing;
    if (always || chart.count(mark.presence) > 0) {
      text += marked(mark.presence, style.color) + " " + meaningOf(mark.presence) + "\n";
    }
  }
  const std::string outOfOrder = chart.outOfOrder();
  return outOfOrder.empty() ? text : text + "Staves in another order than in a result: system " + outOfOrder + "\n";
}

std::string pageNames(const Chart& chart, std::size_t width) {
  std::vector<std::string> words;
  for (std::size_t i = 0; i < chart.pages.size(); ++i) {
    words.push_back(std::to_string(i + 1) + " " + chart.pages[i].name);
  }
  return words.empty() ? "" : "\n" + wrapped(words, width);
}

}  // namespace

std::string chartText(const Chart& chart, const TextStyle& style) {
  const std::size_t names = style.width < widthForNames ? 0 : chart.nameColumns();
  const std::size_t labelWidth = names == 0 ? shortestLabel : std::max(names + idWidth, shortestLabel + 1);
  const std::size_t fitting = style.width > labelWidth + 2 ? (style.width - labelWidth - 2) / 2 : 0;
  const std::size_t systems = std::max(fitting, fewestSystems);
  std::string text = chart.summary() + "\n\n";
  for (std::size_t first = 0; first < chart.systems.size(); first += systems) {
    const Block block{first, std::min(first + systems, chart.systems.size()), labelWidth};
    text += heads(chart, block);
    for (std::size_t i = 0; i < chart.instruments.size(); ++i) {
      text += row(chart, block, i, style.color);
    }
    text += "\n";
  }
  return text + legend(chart, style) + pageNames(chart, style.width);
}

}  // namespace kiv
