#include "bench/literal/order_table.h"

#include "platform/line_reader.h"

namespace kiv::literal {
namespace {

void enlarge(OrderTable& order) {
  ++order.count;
  order.instr.resize(order.count);
  order.present.resize(order.count);
  order.size.resize(order.count);
  order.lines.resize(order.count);
  order.par11.resize(order.count);
  order.clef.resize(order.count);
  order.hite.resize(order.count);
  order.key.resize(order.count);
  order.type.resize(order.count);
  order.timeUp.resize(order.count);
  order.timeDn.resize(order.count);
}

float inColumn(const OrderTable& order, const Column<float>& column, std::int16_t instr) {
  const std::size_t k = rowOf(order, instr);
  return k == 0 ? 0 : column[k];
}

const FirstClefTable::Entry* firstClefOf(const Conversion& run, std::int16_t instr) {
  for (const FirstClefTable::Entry& entry : run.program.firstClefs.entries) {
    if (entry.firstClefInstr == instr) {
      return &entry;
    }
  }
  return nullptr;
}

}  // namespace

std::size_t rowOf(const OrderTable& order, float instr) {
  for (std::size_t k = 1; k <= order.count; ++k) {
    if (static_cast<float>(order.instr[k]) == instr) {
      return k;
    }
  }
  return 0;
}

void setInstrumentOrder(Conversion& run) {
  OrderTable& order = run.order;
  order.count = 0;
  auto report = run.host.openInput("KivSystem2.TXT");
  if (!report) {
    run.host.fatal("Failed to open file KivSystem2.TXT");
  }
  LineReader lines(std::move(report));
  while (const auto line = lines.next()) {
    if (line->starts_with('*') || line->find("SYSTEM=") == std::string_view::npos) {
      continue;
    }
    const std::int16_t instr = wholeValue(run, getElt(*line, "INSTRID"), *line);
    if (rowOf(order, instr) == 0) {
      enlarge(order);
      order.instr[order.count] = instr;
    }
  }
}

float setDetailPar5(const Conversion& run, std::int16_t instr) {
  constexpr float mark = 1000;
  const float size = inColumn(run.order, run.order.size, instr);
  return size >= mark ? size - mark : size;
}

float setDetailPar7(const Conversion& run, std::int16_t instr) {
  return inColumn(run.order, run.order.lines, instr);
}

float setDetailPar11(const Conversion& run, std::int16_t instr) {
  return inColumn(run.order, run.order.par11, instr);
}

float setDetailBarline(const Conversion& run, std::int16_t instr) {
  const float lines = inColumn(run.order, run.order.lines, instr);
  if (lines == 1) {
    return 1;
  }
  if (lines == 2) {
    return 5;
  }
  if (lines == 3) {
    return 7;
  }
  if (lines == 4) {
    return 9;
  }
  return lines == 6 ? 13.0F : 0.0F;
}

float setDetailClef(const Conversion& run, std::int16_t instr) {
  const auto* entry = firstClefOf(run, instr);
  return entry != nullptr ? entry->firstClefKind : 0;
}

float setDetailClefHite(const Conversion& run, std::int16_t instr) {
  const auto* entry = firstClefOf(run, instr);
  return entry != nullptr ? entry->firstClefHeight : 0;
}

float setDetailKey(const Conversion& run, std::int16_t instr) {
  return inColumn(run.order, run.order.key, instr);
}

float setDetailKeyType(const Conversion& run, std::int16_t instr) {
  return inColumn(run.order, run.order.type, instr);
}

}  // namespace kiv::literal
