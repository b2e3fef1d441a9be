#include "bench/literal/convert.h"

#include <limits>

#include "bench/literal/barlines.h"
#include "bench/literal/insert_staff.h"
#include "bench/literal/order_table.h"
#include "bench/literal/output.h"
#include "bench/literal/system_staves.h"
#include "input/file_names.h"
#include "input/files.h"
#include "shell/wait_label.h"

namespace kiv::literal {
namespace {

void countPresent(Conversion& run) {
  OrderTable& order = run.order;
  for (std::size_t k = 1; k <= order.count; ++k) {
    order.present[k] = 0;
  }
  for (int i = 1; i <= run.items.itemCount(); ++i) {
    if (!isOfType(run.items, i, type::staff)) {
      continue;
    }
    const std::int16_t instr = whole(run, i, par::instrument);
    const std::size_t k = rowOf(order, instr);
    if (k == 0) {
      run.host.fatal("Serious logic error - Instrument not in order table: " + std::to_string(instr));
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

std::string resultName(Conversion& run, int system) {
  constexpr std::size_t numberAndSuffix = 8;
  const std::string& first = run.program.panel.txtFirstResultFile.text;
  const auto stem = withoutLastCharacters(run.host, first, numberAndSuffix);
  if (!stem) {
    run.host.runTimeError("Invalid procedure call or argument", first);
  }
  std::string digits = std::to_string(system);
  while (digits.size() < 4) {
    digits.insert(0, "0");
  }
  return *stem + digits + ".MUS";
}

void showInstrumentNumbers(Conversion& run) {
  constexpr float distance = 4;
  constexpr float textSize = 0.7F;
  ItemTable& items = run.items;
  const int before = items.itemCount();
  for (int i = 1; i <= before; ++i) {
    if (isOfType(items, i, type::staff)) {
      Item item =
          newItem(type::instrumentNumber, items.itemPar(i, par::staff), items.itemPar(i, par::position) - distance);
      item.par[par::shownNumber] = items.itemPar(i, par::instrument);
      item.par[par::textSize] = textSize;
      items.store_item(run.host, item);
    }
  }
}

void checkOverwrite(Conversion& run) {
  if (!FileExists(run.host, run.musFileName) || run.program.panel.chkOverwrite.checked) {
    return;
  }
  const std::string question = "File exists: " + run.musFileName + "\r\n\r\nOverwrite?";
  if (run.host.message(Icon::exclamation, question, Buttons::yesNo) == Answer::no) {
    run.host.fatal("Abnormal termination forced by user.");
  }
}

void convertSystem(Conversion& run, const StaffList& list, int system) {
  readSystem(run, list, system);
  setStaffAttributes(run);
  collectBarlines(run);
  collectBraces(run);
  sortBarlines(run);
  countPresent(run);
  insertMissing(run);
  normalizeBarlines(run);
  run.musFileName = resultName(run, system);
  if (run.program.panel.chkShowInstrNumber.checked) {
    showInstrumentNumbers(run);
  }
  checkOverwrite(run);
  sortOnInstrument(run);
  outputBraces(run);
  writeFile(run);
}

std::int16_t nextSystem(Conversion& run, std::int16_t system) {
  if (system == std::numeric_limits<std::int16_t>::max()) {
    run.host.runTimeError(RunTimeError::overflow, run.musFileName);
  }
  return static_cast<std::int16_t>(system + 1);
}

}  // namespace

void cmdConvert_Click(KivSystem& program) {
  showWait(program, "Wait for conversion to finish");
  Conversion run(program);
  setInstrumentOrder(run);
  std::int16_t system = nextSystem(run, 0);
  for (StaffList list = stavesOfSystem(run, system); list.count != 0; list = stavesOfSystem(run, system)) {
    convertSystem(run, list, system);
    system = nextSystem(run, system);
  }
  hideWait(program);
  program.host.inform("Created " + std::to_string(system - 1) + " files.\r\nFirst is " +
                      program.panel.txtFirstResultFile.text + "\r\nLast is " + program.musFileName);
}

}  // namespace kiv::literal
