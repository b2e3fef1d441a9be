#include "drawing/chart_layout.h"

#include <algorithm>

#include "drawing/text_width.h"

namespace kiv {
namespace {

constexpr int largestCell = 56;  // in quarters of a millimeter
constexpr int smallestCell = 13;
constexpr double quarter = 0.25;
constexpr double available = sheet::height - 2 * sheet::margin - sheet::titleHeight - sheet::legendHeight;

double labelWidthOf(const Chart& chart) {
  double names = 0;
  for (const auto& [instrument, name] : chart.names) {
    names = std::max(names, sheet::fontSize * widthOfText(fullNameOf(name)));
  }
  return sheet::idWidth + std::min(names, sheet::longestName);
}

double headHeightOf(const Chart& chart) {
  constexpr double distance = 2;
  double names = 0;
  for (const ChartPage& page : chart.pages) {
    names = std::max(names, widthOfText(headOf(page)));
  }
  return sheet::systemNumberHeight + sheet::fontSize * names + distance;
}

/// A row holds as many systems as fit, a multiple of five where there are several rows, so that their numbers are
/// found easily.
std::size_t systemsInRow(const ChartLayout& layout, std::size_t systems, std::size_t wanted) {
  constexpr std::size_t step = 5;
  const double width = sheet::width - 2 * sheet::margin - layout.labelWidth;
  const auto fitting = std::max<std::size_t>(static_cast<std::size_t>(width / layout.cell), 1);
  if (wanted > 0) {
    return std::min(wanted, fitting);
  }
  return fitting < systems && fitting > 2 * step ? fitting - fitting % step : fitting;
}

std::size_t quotientRoundedUp(std::size_t number, std::size_t divisor) {
  return (number + divisor - 1) / divisor;
}

/// Instruments that do not fit below each other are drawn in several panels of about the same height.
std::size_t instrumentsInPanel(const ChartLayout& layout, std::size_t instruments) {
  const double height = available - layout.headHeight - sheet::rowGap;
  const auto fitting = std::max<std::size_t>(static_cast<std::size_t>(height / layout.cell), 1);
  const std::size_t panels = std::max<std::size_t>(quotientRoundedUp(instruments, fitting), 1);
  return std::max<std::size_t>(quotientRoundedUp(instruments, panels), 1);
}

void place(ChartLayout& layout, ChartPanel panel) {
  constexpr double top = sheet::margin + sheet::titleHeight;
  panel.top = top;
  if (!layout.panels.empty()) {
    const ChartPanel& previous = layout.panels.back();
    panel.sheet = previous.sheet;
    panel.top = layout.bottom(previous) + sheet::rowGap;
    if (layout.bottom(panel) + sheet::rowGap > top + available) {
      ++panel.sheet;
      panel.top = top;
    }
  }
  layout.panels.push_back(panel);
  layout.sheets = panel.sheet + 1;
}

ChartLayout layoutWith(const Chart& chart, const ChartLayout& measures, double cell, std::size_t systemsPerRow) {
  ChartLayout layout = measures;
  layout.cell = cell;
  const std::size_t systems = chart.systems.size();
  const std::size_t instruments = chart.instruments.size();
  const std::size_t inRow = systemsInRow(layout, systems, systemsPerRow);
  const std::size_t inPanel = instrumentsInPanel(layout, instruments);
  for (std::size_t system = 0; system < systems; system += inRow) {
    for (std::size_t instrument = 0; instrument < instruments; instrument += inPanel) {
      place(layout,
            {0, 0, system, std::min(system + inRow, systems), instrument, std::min(instrument + inPanel, instruments)});
    }
  }
  return layout;
}

/// Whether all is on one sheet, with all instruments below each other.
bool fitsOneSheet(const Chart& chart, const ChartLayout& layout) {
  return layout.sheets == 1 &&
         (layout.panels.empty() || layout.panels.front().endInstrument == chart.instruments.size());
}

}  // namespace

ChartLayout layOut(const Chart& chart, std::size_t systemsPerRow) {
  ChartLayout measures;
  measures.labelWidth = labelWidthOf(chart);
  measures.headHeight = headHeightOf(chart);
  for (int cell = largestCell; cell > smallestCell; --cell) {
    ChartLayout layout = layoutWith(chart, measures, cell * quarter, systemsPerRow);
    if (fitsOneSheet(chart, layout)) {
      return layout;
    }
  }
  return layoutWith(chart, measures, smallestCell * quarter, systemsPerRow);
}

std::string fullHeadOf(const ChartPage& page) {
  return page.name.substr(0, page.name.find('.'));
}

std::string headOf(const ChartPage& page) {
  return cutAtFront(fullHeadOf(page), sheet::longestPageName / sheet::fontSize);
}

std::string fullNameOf(const ChartName& name) {
  return name.full.empty() ? name.text : name.full;
}

}  // namespace kiv
