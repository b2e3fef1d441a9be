#include "conversion/dump_memory.h"

#include <array>

#include "analysis/zoned_line.h"
#include "base/number.h"
#include "input/files.h"
#include "messages/run_time_errors.h"

namespace kiv {
namespace {

/// P1 to P20, each after a blank, without trailing zeros.
std::string parameterLine(const ItemTable& items, int i) {
  std::string line;
  for (int p = 1; p <= parameterCount; ++p) {
    line += " " + generalNumber(items.itemPar(i, p));
  }
  while (line.ends_with(" 0")) {
    line.resize(line.size() - 2);
  }
  return line;
}

std::string itemLines(const ItemTable& items) {
  std::string lines;
  for (int i = 1; i <= items.itemCount(); ++i) {
    lines += "Item " + std::to_string(i) + "\r\n" + parameterLine(items, i) + items.itemText(i) + "\r\n";
  }
  return lines;
}

std::string orderHeading(Machine& machine) {
  ZonedLine zones(machine, "");
  for (const char* column :
       {"index", "instr", "size", "lines", "par11", "clef", "hite", "key", "type", "timeUp", "timeDn"}) {
    zones.field(column);
  }
  return zones.text() + "\r\n";
}

std::string orderLine(Machine& machine, const OrderEntry& entry, int index) {
  ZonedLine zones(machine, "");
  zones.number(static_cast<float>(index)).number(entry.instr);
  for (const float column : {entry.size.stored(), entry.lines, entry.par11, entry.clef.stored(), entry.clefHeight,
                             entry.key, entry.keyType, entry.timeUp, entry.timeDn}) {
    zones.number(column);
  }
  return zones.text() + "\r\n";
}

}  // namespace

void dumpMemory(const Host& host, const std::string& musFileName, const ItemTable& items, const OrderTable& order) {
  auto file = host.files.openOutput(dumpFile);
  if (!file) {
    throw ProgramEnd{0};
  }
  std::string lines = "File " + musFileName + "\r\n" + itemLines(items);
  lines += "============= order table ===============\r\n" + orderHeading(host.machine);
  for (int k = 1; k <= order.count(); ++k) {
    lines += orderLine(host.machine, order.entry(k), k);
  }
  if (const auto failure = file->write(lines)) {
    endProgram(messages::platformFailure(*failure, dumpFile));
  }
  file.reset();
  ViewFile(host, dumpFile);
}

}  // namespace kiv
