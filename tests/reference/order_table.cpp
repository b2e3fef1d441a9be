#include "tests/reference/order_table.h"

namespace kiv::reference {
namespace {

void addRow(OrderTable& order) {
  ++order.count;
  order.instr.growTo(order.count);
  order.present.growTo(order.count);
  order.size.growTo(order.count);
  order.lines.growTo(order.count);
  order.par11.growTo(order.count);
  order.clef.growTo(order.count);
  order.clefHeight.growTo(order.count);
  order.key.growTo(order.count);
  order.keyType.growTo(order.count);
  order.timeUp.growTo(order.count);
  order.timeDn.growTo(order.count);
}

float inColumn(const OrderTable& order, const Column<float>& column, std::int16_t instr) {
  const std::size_t k = rowOf(order, instr);
  return k == 0 ? 0 : column[k];
}

const FirstClefTable::Entry* firstClefOf(const FirstClefTable& firstClefs, std::int16_t instr) {
  for (const FirstClefTable::Entry& entry : firstClefs.entries) {
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

void addInstrument(OrderTable& order, std::int16_t instr) {
  if (rowOf(order, instr) == 0) {
    addRow(order);
    order.instr[order.count] = instr;
  }
}

float setDetailPar5(const OrderTable& order, std::int16_t instr) {
  constexpr float marker = 1000;
  const float size = inColumn(order, order.size, instr);
  return size >= marker ? size - marker : size;
}

float setDetailPar7(const OrderTable& order, std::int16_t instr) {
  return inColumn(order, order.lines, instr);
}

float setDetailPar11(const OrderTable& order, std::int16_t instr) {
  return inColumn(order, order.par11, instr);
}

float setDetailBarline(const OrderTable& order, std::int16_t instr) {
  const float lines = inColumn(order, order.lines, instr);
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

float setDetailClef(const FirstClefTable& firstClefs, std::int16_t instr) {
  const auto* entry = firstClefOf(firstClefs, instr);
  return entry != nullptr ? entry->firstClefKind.stored() : 0;
}

float setDetailClefHite(const FirstClefTable& firstClefs, std::int16_t instr) {
  const auto* entry = firstClefOf(firstClefs, instr);
  return entry != nullptr ? entry->firstClefHeight : 0;
}

float setDetailKey(const OrderTable& order, std::int16_t instr) {
  return inColumn(order, order.key, instr);
}

float setDetailKeyType(const OrderTable& order, std::int16_t instr) {
  return inColumn(order, order.keyType, instr);
}

}  // namespace kiv::reference
