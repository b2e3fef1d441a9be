#include "tests/reference/convert_group.h"

#include <limits>

#include "input/file_names.h"
#include "input/files.h"
#include "messages/conversion_messages.h"
#include "messages/run_time_errors.h"
#include "tests/reference/barlines.h"
#include "tests/reference/insert_staff.h"
#include "tests/reference/order_table.h"
#include "tests/reference/output.h"
#include "tests/reference/report_staves.h"
#include "tests/reference/system_staves.h"

namespace kiv::reference {
namespace {

void countPresent(const ItemTable& items, OrderTable& order) {
  for (std::size_t k = 1; k <= order.count; ++k) {
    order.present[k] = 0;
  }
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (!isStaff(items, i)) {
      continue;
    }
    const std::int16_t instr = whole(items, i, par::instrument);
    const std::size_t k = rowOf(order, instr);
    if (k == 0) {
      endProgram(messages::instrumentNotInOrder(instr));
    }
    ++order.present[k];
  }
}

void insertMissing(Conversion& run) {
  for (std::size_t k = 1; k <= run.order.count; ++k) {
    if (run.order.present[k] == 0) {
      insertStaff(run, run.order.instr[k]);
    }
  }
}

std::string resultName(Machine& machine, const std::string& first, int system) {
  constexpr std::size_t numberAndSuffix = 8;
  const auto stem = withoutLastCharacters(machine, first, numberAndSuffix);
  if (!stem) {
    endProgram(messages::invalidArgument(first));
  }
  std::string digits = std::to_string(system);
  while (digits.size() < 4) {
    digits.insert(0, "0");
  }
  return *stem + digits + ".MUS";
}

void showInstrumentNumbers(ItemTable& items) {
  constexpr float distance = 4;
  constexpr float textSize = 0.7F;
  const int before = items.itemCount();
  for (int i = 1; i <= before; ++i) {
    if (isStaff(items, i)) {
      Item item(ItemType::instrumentNumber, items.itemPar(i, par::staff), items.itemPar(i, par::position) - distance);
      item[par::shownNumber] = items.itemPar(i, par::instrument);
      item[par::textSize] = textSize;
      items.store_item(item);
    }
  }
}

void checkOverwrite(const Host& host, const std::string& result, bool overwrite) {
  if (FileExists(host, result) && !overwrite && host.user.show(messages::fileExists(result)) == Answer::no) {
    endProgram(messages::stoppedByUser());
  }
}

void convertSystem(Conversion& run, const StaffList& list, std::int16_t system) {
  readSystem(run, list, system);
  setStaffAttributes(run.items, run.order);
  collectBarlines(run);
  collectBraces(run.items, run.braces);
  sortBarlines(run.barlines);
  countPresent(run.items, run.order);
  insertMissing(run);
  normalizeBarlines(run);
}

std::int16_t nextSystem(std::int16_t system, const std::string& lastResult) {
  if (system == std::numeric_limits<std::int16_t>::max()) {
    endProgram(messages::overflow({.file = lastResult}));
  }
  return static_cast<std::int16_t>(system + 1);
}

}  // namespace

Message convertGroup(const Host& host, const FirstClefTable& firstClefs, const Options& options, Tables& tables) {
  Conversion run(host.files, firstClefs, tables);
  setInstrumentOrder(host.files, run.order);
  std::string& result = tables.musFileName;
  std::int16_t system = 1;
  for (StaffList list = stavesOfSystem(host.files, system); list.count != 0;
       list = stavesOfSystem(host.files, system)) {
    convertSystem(run, list, system);
    result = resultName(host.machine, options.firstResultFile, system);
    if (options.showInstrumentNumbers) {
      showInstrumentNumbers(run.items);
    }
    checkOverwrite(host, result, options.overwrite);
    sortOnInstrument(host.user, run.items);
    outputBraces(run.items, run.braces);
    writePage(host.files, result, run.items);
    system = nextSystem(system, result);
  }
  return messages::created(system - 1, options.firstResultFile, result);
}

}  // namespace kiv::reference
