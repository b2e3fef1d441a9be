#include <algorithm>
#include <array>

#include "drawing/chart_drawings.h"
#include "drawing/page_heads.h"

namespace kiv {
namespace {

constexpr std::size_t shortestLabel = 8;
constexpr std::size_t idWidth = 6;         // with the blank before it
constexpr std::size_t widthForNames = 60;  // of the narrowest line with names on it
constexpr std::size_t fewestSystems = 8;   // on a line, however narrow

/// What stands for a cell.
struct Mark {
  char character;
  const char* color;
  const char* meaning;
};

constexpr std::array<Presence, presenceKinds> kinds = {Presence::present, Presence::missing, Presence::duplicate,
                                                       Presence::zeroId};
constexpr Mark movedMark = {'m', "\x1B[36m", meaningOfMoved};

Mark markOf(Presence presence) {
  switch (presence) {
    case Presence::present:
      return {'#', "\x1B[32m", meaningOf(presence)};
    case Presence::missing:
      return {'.', "\x1B[33m", meaningOf(presence)};
    case Presence::duplicate:
      return {'D', "\x1B[31m", meaningOf(presence)};
    case Presence::zeroId:
      break;
  }
  return {'0', "\x1B[31m", meaningOf(presence)};
}

/// A cell that is a problem shows the problem.
Mark markOf(const ChartSystem& system, std::size_t instrument) {
  const Presence presence = system.cells[instrument];
  return presence == Presence::present && system.isMoved(instrument) ? movedMark : markOf(presence);
}

std::string marked(const Mark& mark, bool color) {
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

/// Lines with the names of the pages, from top to bottom, above their first systems.
std::string pageLines(const Chart& chart, const PageHeads& pageHeads, Block block) {
  std::string text;
  for (std::size_t i = 0; i < pageHeads.height(); ++i) {
    std::string line = rightAligned(i == 0 ? "page" : "", block.labelWidth) + "  ";
    for (std::size_t system = block.first; system < block.end; ++system) {
      const bool starts = system == block.first || chart.startsPage(system);
      line += starts ? pageHeads.character(chart.systems[system].page, i) : ' ';
      line += ' ';
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + "\n";
  }
  return text;
}

std::string heads(const Chart& chart, const PageHeads& pageHeads, Block block) {
  NumberLine files("files", block);
  NumberLine systems("system", block);
  for (std::size_t i = block.first; i < block.end; ++i) {
    const ChartPage& page = chart.pages[chart.systems[i].page];
    if ((i == block.first || chart.startsPage(i)) && page.files > 1) {
      files.at(i - block.first, std::to_string(page.files));
    }
    systems.at(i - block.first, std::to_string(i + 1));
  }
  return pageLines(chart, pageHeads, block) + (chart.hasMultifilePages() ? files.text() : "") + systems.text();
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
    line += marked(markOf(chart.systems[i], instrument), color);
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

bool showsMoved(const Chart& chart) {
  return std::any_of(chart.systems.begin(), chart.systems.end(), [](const ChartSystem& system) {
    for (std::size_t i = 0; i < system.moved.size(); ++i) {
      if (system.isMoved(i) && system.cells[i] == Presence::present) {
        return true;
      }
    }
    return false;
  });
}

std::string legend(const Chart& chart, const TextStyle& style) {
  std::string text;
  const auto add = [&](const Mark& mark) { text += marked(mark, style.color) + " " + mark.meaning + "\n"; };
  for (const Presence presence : kinds) {
    if (chart.count(presence) > 0) {
      add(markOf(presence));
    }
  }
  if (showsMoved(chart)) {
    add(movedMark);
  }
  const std::string outOfOrder = chart.outOfOrder();
  return outOfOrder.empty() ? text : text + "Staves in another order than in a result: system " + outOfOrder + "\n";
}

/// The pages by name: of a group that the heads name in full the first and the last, else all of them.
std::string pageNames(const Chart& chart, const PageHeads& heads, std::size_t width) {
  if (chart.pages.empty()) {
    return "";
  }
  if (heads.nameEachPage()) {
    // Not as a range, in which there may be pages that were skipped.
    const std::string& first = chart.pages.front().name;
    return chart.pages.size() == 1 ? "\nPage " + first + "\n"
                                   : "\nFirst page " + first + ", last page " + chart.pages.back().name + "\n";
  }
  std::vector<std::string> words;
  for (const ChartPage& page : chart.pages) {
    words.push_back(page.name);
  }
  return "\nPages, in order:\n" + wrapped(words, width);
}

std::size_t systemsInRow(const Chart& chart, const TextStyle& style, std::size_t labelWidth) {
  if (style.systemsPerRow > 0) {
    return style.systemsPerRow;
  }
  constexpr std::size_t step = 5;  // of the number that a wrapped row begins with
  const std::size_t fitting = style.width > labelWidth + 2 ? (style.width - labelWidth - 2) / 2 : 0;
  const std::size_t systems = std::max(fitting, fewestSystems);
  return systems < chart.systems.size() && systems > 2 * step ? systems - systems % step : systems;
}

}  // namespace

std::string chartText(const Chart& chart, const TextStyle& style) {
  const std::size_t names = style.width < widthForNames ? 0 : chart.nameColumns();
  const std::size_t labelWidth = names == 0 ? shortestLabel : std::max(names + idWidth, shortestLabel + 1);
  const std::size_t systems = systemsInRow(chart, style, labelWidth);
  const PageHeads pageHeads(chart.pages);
  std::string text = chart.summary() + "\n\n";
  for (std::size_t first = 0; first < chart.systems.size(); first += systems) {
    const Block block{first, std::min(first + systems, chart.systems.size()), labelWidth};
    text += heads(chart, pageHeads, block);
    for (std::size_t i = 0; i < chart.instruments.size(); ++i) {
      text += row(chart, block, i, style.color);
    }
    text += "\n";
  }
  return text + legend(chart, style) + pageNames(chart, pageHeads, style.width);
}

}  // namespace kiv
