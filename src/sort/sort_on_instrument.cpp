#include "sort/sort_on_instrument.h"

#include <limits>
#include <unordered_map>
#include <vector>

#include "input/file_names.h"
#include "messages/conversion_messages.h"
#include "messages/run_time_errors.h"
#include "mus/reader.h"
#include "mus/sort_item_table.h"

namespace kiv {
namespace {

std::int16_t staffOf(const ItemTable& table, int i) {
  return wholePar(table, i, par::staff);
}

/// The instrument keys of the staves, by staff number; of several staves with one number the first counts.
struct StaffKeys {
  std::unordered_map<std::int16_t, float> keys;
  int staves = 0;
};

StaffKeys staffKeys(const ItemTable& table) {
  StaffKeys list;
  for (const int i : table.signRows()) {
    if (isStaff(table, i)) {
      list.keys.emplace(staffOf(table, i), table.itemPar(i, par::instrument));
      ++list.staves;
    }
  }
  return list;
}

float keyOfStaff(const StaffKeys& staves, std::int16_t staff) {
  const auto key = staves.keys.find(staff);
  if (key == staves.keys.end()) {
    endProgram(messages::sortProblem());
  }
  return key->second;
}

void sortByKey(const StaffKeys& staves, ItemTable& table) {
  std::vector<SortKey> keys;
  keys.reserve(static_cast<std::size_t>(table.itemCount()));
  float staff = std::numeric_limits<float>::quiet_NaN();
  float key = 0;
  for (int i = 1; i <= table.itemCount(); ++i) {
    const Item& item = table.item(i);
    if (item[par::staff] != staff) {  // items mostly come staff by staff
      key = keyOfStaff(staves, staffOf(table, i));
      staff = item[par::staff];
    }
    keys.push_back({key, item[par::position], item[par::height]});
  }
  table.reorder(sortedRows(keys));
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

void moveSystemBarline(int staves, ItemTable& table) {
  for (const int i : table.signRows()) {
    if (table.type(i) == ItemType::barline && table.itemPar(i, par::spannedStaves) == static_cast<float>(staves)) {
      table.itemPar(i, par::staff) = 1;
      return;
    }
  }
  endProgram(messages::systemBarlineProblem());
}

}  // namespace

std::optional<std::string> sortedName(Machine& machine, const std::string& musFileName) {
  const std::string suffix = "PAG";
  const auto stem = withoutLastCharacters(machine, musFileName, suffix.size());
  return stem ? std::optional(*stem + suffix) : std::nullopt;
}

void sortOnInstrument(ItemTable& table) {
  const StaffKeys staves = staffKeys(table);
  sortByKey(staves, table);
  numberStaves(table);
  moveSystemBarline(staves.staves, table);
}

namespace {

/// Sorts the staves of a page. The critical message that ends it knows the page.
void sortPage(const std::string& musFileName, ItemTable& table) {
  try {
    sortOnInstrument(table);
  } catch (ProgramEnd& end) {
    if (end.message && end.message->location.file.empty()) {
      end.message->location.file = musFileName;
    }
    throw;
  }
}

}  // namespace

std::string cmdSortInstrument_Click(const Host& host, const std::string& namesFile, NamesTable& names, ItemTable& table,
                                    ReadBack readBack) {
  host.user.setPointer(Pointer::hourglass);
  LoadNamesTable(host, namesFile, names);
  const int count = names.nameCount;
  std::string sorted;
  std::string buffer;  // of the results
  for (int k = 1; k <= count; ++k) {
    host.user.showProgress(k - 1, count, "pages");
    const std::string& musFileName = names.name(k);
    readFile(host.files, musFileName, table);
    sortPage(musFileName, table);
    const auto name = sortedName(host.machine, musFileName);
    if (!name) {
      endProgram(messages::invalidArgument(musFileName));
    }
    sorted = *name;
    writeFile(host.files, sorted, table, buffer, readBack);
  }
  host.user.showProgress(count, count, "pages");
  host.user.setPointer(Pointer::normal);
  host.user.show(messages::sortFinished());
  return sorted;
}

}  // namespace kiv
