#include "analysis/page_systems.h"

#include <vector>

#include "analysis/left_barlines.h"
#include "analysis/read_bar_data.h"
#include "base/number.h"
#include "input/file_names.h"
#include "mus/sort_item_table.h"

namespace kiv {
namespace {

constexpr float bottomStaff = 1;  // the mark of the lowest staff of a system, and the number of the lowest of a page
constexpr float leftBarline = 1;

bool isLeftBarline(const ItemTable& table, int i) {
  return table.itemPar(i, par::type) == type::barline && table.itemPar(i, par::mark) == leftBarline;
}

/// Raises number to the highest value of a parameter among the staves.
void raiseToHighest(Host& host, const std::string& musFileName, const ItemTable& table, const std::vector<int>& staves,
                    int parameter, std::int16_t& number) {
  for (const int i : staves) {
    if (table.itemPar(i, parameter) > static_cast<float>(number)) {
      number = wholePar(host, musFileName, table, i, parameter);
    }
  }
}

/// Makes the whole page one system, held together by the left barline of its lowest staff.
void joinStaves(Host& host, const std::string& musFileName, std::int16_t staves, ItemTable& table) {
  bool systemBarline = false;
  for (int i = 1; i <= table.itemCount(); ++i) {
    const bool lowest = table.itemPar(i, par::staff) == bottomStaff;
    if (isStaff(table, i)) {
      table.itemPar(i, par::stavesUp) = lowest ? static_cast<float>(staves) : 0;
      table.itemPar(i, par::mark) = lowest ? table.itemPar(i, par::mark) : 0;
    } else if (isLeftBarline(table, i)) {
      table.itemPar(i, par::spannedStaves) = lowest ? table.itemPar(i, par::spannedStaves) : 0;
      systemBarline = systemBarline || lowest;
    }
  }
  if (!systemBarline) {
    host.fatal("No system barline encountered in multifile page. Top file is: " + musFileName);
  }
}

void readMultifilePage(Host& host, const PageEntry& page, std::string& musFileName, ItemTable& table,
                       FirstClefTable& firstClefs, MusReader& reader) {
  const std::string beforeLetter =
      page.pagePath + extractPartName(host, page.pageName) + extractPartNumb(host, page.pageName);
  const std::string suffix = extractPartSuff(host, page.pageName);
  std::int16_t offset = 0;
  const std::string lettersUpward(page.pageLetters.rbegin(), page.pageLetters.rend());
  for (const char letter : lettersUpward) {
    musFileName = beforeLetter;
    musFileName += letter;
    musFileName += suffix;
    readBarData(host, musFileName, offset, table, firstClefs, reader);
    raiseToHighest(host, musFileName, table, staffRows(table), par::staff, offset);
  }
  sort_item_table(host, table);
  deleteLeftBarlines(host, musFileName, table);
  joinStaves(host, musFileName, offset, table);
}

/// From the bottom of the page upward, counts the systems and gives each staff the number of the one it stands in.
/// A staff below the first bottom staff keeps what its file gave it.
void countUpward(const std::vector<int>& staves, ItemTable& table) {
  int system = 0;
  for (std::size_t left = staves.size(); left > 0; --left) {
    const int k = staves[left - 1];
    if (table.itemPar(k, par::mark) == bottomStaff) {
      ++system;
    }
    if (system > 0) {
      table.itemPar(k, par::system) = static_cast<float>(system);
    }
  }
}

}  // namespace

void readPage(Host& host, const PageEntry& page, const std::string& resultFolder, std::string& musFileName,
              ItemTable& table, FirstClefTable& firstClefs, MusReader& reader) {
  table.restart();
  if (page.isMultifile()) {
    readMultifilePage(host, page, musFileName, table, firstClefs, reader);
    return;
  }
  const bool hasFolder = page.pageName.find('\\') != std::string::npos;
  musFileName = hasFolder ? page.pageName : resultFolder + page.pageName;
  readBarData(host, musFileName, 0, table, firstClefs, reader);
  sort_item_table(host, table);
  deleteLeftBarlines(host, musFileName, table);
}

PageSystems numberSystems(Host& host, const std::string& musFileName, ItemTable& table, std::int16_t& systemBase) {
  const std::vector<int> staves = staffRows(table);
  countUpward(staves, table);
  std::int16_t count = 0;
  raiseToHighest(host, musFileName, table, staves, par::system, count);
  const auto base = static_cast<float>(systemBase);
  for (const int i : staves) {
    table.itemPar(i, par::system) = base + (static_cast<float>(count) - table.itemPar(i, par::system) + 1);
  }
  const PageSystems systems{systemBase + 1, systemBase + count};
  const auto raised = toInt16(systems.last);
  if (!raised) {
    host.runTimeError(RunTimeError::overflow, musFileName);
  }
  systemBase = *raised;
  return systems;
}

}  // namespace kiv
