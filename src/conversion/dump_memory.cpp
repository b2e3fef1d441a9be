#include "conversion/dump_memory.h"

#include <array>

#include "analysis/zoned_line.h"
#include "base/number.h"
#include "input/files.h"

namespace kiv {
namespace {

/// P1 to P20, each behind a blank, without the zeros at the end.
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

std::string orderHeading(Host& host) {
  ZonedLine zones(host, "");
  for (const char* column :
       {"index", "instr", "size", "lines", "par11", "clef", "hite", "key", "type", "timeUp", "timeDn"}) {
    zones.field(column);
  }
  return zones.text() + "\r\n";
}

std::string orderLine(Host& host, const OrderEntry& entry, int index) {
  ZonedLine zones(host, "");
  zones.number(static_cast<float>(index)).number(entry.instr);
  for (const float column : {entry.size, entry.lines, entry.par11, entry.clef, entry.hite, entry.key, entry.type,
                             entry.timeUp, entry.timeDn}) {
    zones.number(column);
  }
  return zones.text() + "\r\n";
}

}  // namespace

void dumpMemory(Host& host, const std::string& musFileName, const ItemTable& items, const OrderTable& order) {
  auto file = host.openOutput(dumpFile);
  if (!file) {
    throw ProgramEnd{0};
  }
  std::string lines = "File " + musFileName + "\r\n" + itemLines(items);
  lines += "============= order table ===============\r\n" + orderHeading(host);
  for (int k = 1; k <= order.count(); ++k) {
    lines += orderLine(host, order.entry(k), k);
  }
  if (const auto failure = file->write(lines)) {
    host.runTimeError(*failure, dumpFile);
  }
  file.reset();
  ViewFile(host, dumpFile);
}

}  // namespace kiv
