#include "sort/sort_on_instrument.h"

#include <unordered_map>
#include <vector>

#include "input/file_names.h"
#include "mus/reader.h"
#include "mus/sort_item_table.h"
#include "mus/writer.h"

namespace kiv {
namespace {

std::int16_t staffOf(Host& host, const std::string& musFileName, const ItemTable& table, int i) {
  return wholePar(host, musFileName, table, i, par::staff);
}

/// The instrument keys of the staves, by staff number; of several staves with one number the first counts.
struct StaffKeys {
  std::unordered_map<std::int16_t, float> keys;
  int staves = 0;
};

StaffKeys staffKeys(Host& host, const std::string& musFileName, const ItemTable& table) {
  StaffKeys list;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (isStaff(table, i)) {
      list.keys.emplace(staffOf(host, musFileName, table, i), table.itemPar(i, par::instrument));
      ++list.staves;
    }
  }
  return list;
}

void sortByKey(Host& host, const std::string& musFileName, const StaffKeys& staves, ItemTable& table) {
  std::vector<SortKey> keys;
  keys.reserve(static_cast<std::size_t>(table.itemCount()));
  auto key = staves.keys.end();
  for (int i = 1; i <= table.itemCount(); ++i) {
    const std::int16_t staff = staffOf(host, musFileName, table, i);
    if (key == staves.keys.end() || key->first != staff) {  // items mostly stand staff by staff
      key = staves.keys.find(staff);
    }
    if (key == staves.keys.end()) {
      host.fatal("Sort problem");
    }
    keys.push_back({key->second, table.itemPar(i, par::position), table.itemPar(i, par::height)});
  }
  table.reorder(sortedRows(host, keys));
}

/// Every run of items with one old staff number gets the next new one.
void numberStaves(ItemTable& table) {
  int staff = 1;
  float old = 0;
  for (int i = 1; i <= table.itemCount(); ++i) {
    const float own = table.itemPar(i, par::staff);
    if (i > 1 && own != old) {
      ++staff;
    }
    old = own;
    table.itemPar(i, par::staff) = static_cast<float>(staff);
  }
}

void moveSystemBarline(Host& host, int staves, ItemTable& table) {
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.itemPar(i, par::type) == type::barline &&
        table.itemPar(i, par::spannedStaves) == static_cast<float>(staves)) {
      table.itemPar(i, par::staff) = 1;
      return;
    }
  }
  host.fatal("System barline problem.");
}

/// The name with PAG in the place of its last three characters.
std::string sortedName(Host& host, const std::string& musFileName) {
  const std::string suffix = "PAG";
  const auto stem = withoutLastCharacters(host, musFileName, suffix.size());
  if (!stem) {
    host.runTimeError("Invalid procedure call or argument", musFileName);
  }
  return *stem + suffix;
}

}  // namespace

void sortOnInstrument(Host& host, const std::string& musFileName, ItemTable& table) {
  const StaffKeys staves = staffKeys(host, musFileName, table);
  sortByKey(host, musFileName, staves, table);
  numberStaves(table);
  moveSystemBarline(host, staves.staves, table);
}

void cmdSortInstrument_Click(Host& host, const std::string& namesFile, NamesTable& names, std::string& musFileName,
                             ItemTable& table) {
  host.setPointer(Pointer::hourglass);
  LoadNamesTable(host, namesFile, names);
  const int count = names.nameCount;
  std::string room;  // of the results
  for (int k = 1; k <= count; ++k) {
    host.showProgress(k - 1, count, "pages");
    musFileName = names.name(k);
    readFile(host, musFileName, table);
    sortOnInstrument(host, musFileName, table);
    musFileName = sortedName(host, musFileName);
    writeFile(host, musFileName, table, room);
  }
  host.showProgress(count, count, "pages");
  host.setPointer(Pointer::normal);
  host.inform("Sort finished");
}

}  // namespace kiv
