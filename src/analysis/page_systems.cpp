#include "analysis/page_systems.h"

#include <vector>

#include "analysis/left_barlines.h"
#include "base/number.h"
#include "messages/analysis_messages.h"
#include "messages/run_time_errors.h"
#include "mus/sort_item_table.h"
#include "platform/separators.h"

namespace kiv {
namespace {

constexpr float lowestStaff = 1;

/// Raises number to the highest value of a parameter among the staves.
void raiseToHighest(const ItemTable& table, const std::vector<int>& staves, int parameter, std::int16_t& number) {
  for (const int i : staves) {
    if (table.itemPar(i, parameter) > static_cast<float>(number)) {
      number = wholePar(table, i, parameter);
    }
  }
}

/// Makes the whole page one system, held together by the left barline of its lowest staff.
void joinStaves(std::int16_t staves, ItemTable& table) {
  bool systemBarline = false;
  for (int i = 1; i <= table.itemCount(); ++i) {
    const bool lowest = table.itemPar(i, par::staff) == lowestStaff;
    if (isStaff(table, i)) {
      table.itemPar(i, par::stavesUp) = lowest ? static_cast<float>(staves) : 0;
      table.itemPar(i, par::mark) = lowest ? table.itemPar(i, par::mark) : mark::none;
    } else if (isLeftBarline(table, i)) {
      table.itemPar(i, par::spannedStaves) = lowest ? table.itemPar(i, par::spannedStaves) : 0;
      systemBarline = systemBarline || lowest;
    }
  }
  if (!systemBarline) {
    endProgram(messages::noSystemBarline(table.file()));
  }
}

/// From the bottom of the page upward, counts the systems and gives each staff the number of its system.
/// A staff below the first bottom staff keeps what its file gave it.
void countUpward(const std::vector<int>& staves, ItemTable& table) {
  int system = 0;
  for (std::size_t left = staves.size(); left > 0; --left) {
    const int k = staves[left - 1];
    if (table.itemPar(k, par::mark) == mark::bottomStaff) {
      ++system;
    }
    if (system > 0) {
      table.itemPar(k, par::system) = static_cast<float>(system);
    }
  }
}

}  // namespace

std::string PageReader::readMultifilePage(const PageEntry& page, ItemTable& table, FirstClefTable& firstClefs) {
  std::int16_t offset = 0;
  const std::vector<std::string> files = filesOf(machine_, page);
  for (const std::string& musFileName : files) {
    barData_.readBarData(musFileName, offset, table, firstClefs);
    raiseToHighest(table, staffRows(table), par::staff, offset);
  }
  sort_item_table(table);
  deleteLeftBarlines(table);
  joinStaves(offset, table);
  return files.back();
}

std::string PageReader::read(const PageEntry& page, const std::string& resultFolder, ItemTable& table,
                             FirstClefTable& firstClefs) {
  table.clear();
  if (page.isMultifile()) {
    return readMultifilePage(page, table, firstClefs);
  }
  const bool hasFolder = lastBackslash(machine_, page.pageName) != std::string::npos;
  std::string musFileName = hasFolder ? page.pageName : resultFolder + page.pageName;
  barData_.readBarData(musFileName, 0, table, firstClefs);
  sort_item_table(table);
  deleteLeftBarlines(table);
  return musFileName;
}

PageSystems numberSystems(ItemTable& table, const std::vector<int>& staves, std::int16_t& systemBase) {
  countUpward(staves, table);
  std::int16_t count = 0;
  raiseToHighest(table, staves, par::system, count);
  const auto base = static_cast<float>(systemBase);
  for (const int i : staves) {
    table.itemPar(i, par::system) = base + (static_cast<float>(count) - table.itemPar(i, par::system) + 1);
  }
  const PageSystems systems{systemBase + 1, systemBase + count};
  const auto raised = toInt16(systems.last);
  if (!raised) {
    endProgram(messages::overflow({.file = table.file()}));
  }
  systemBase = *raised;
  return systems;
}

}  // namespace kiv
