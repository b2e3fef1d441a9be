#include "conversion/order_table.h"

#include <limits>

#include "analysis/report.h"
#include "base/number.h"
#include "messages/run_time_errors.h"

namespace kiv {
namespace {

/// The instrument's entry; one of zeros for an instrument that has none.
const OrderEntry& entryOf(const OrderTable& order, std::int16_t instr) {
  static const OrderEntry none;
  const int k = order.find(instr);
  return k == 0 ? none : order.entry(k);
}

}  // namespace

int OrderTable::find(float instr) const {
  const auto whole = toInt16(instr);
  if (!whole || static_cast<float>(*whole) != instr) {
    return 0;
  }
  const auto place = places_.find(*whole);
  return place == places_.end() ? 0 : place->second;
}

void OrderTable::clear() {
  count_ = 0;
  places_.clear();
}

void OrderTable::add(std::int16_t instr) {
  if (count_ == std::numeric_limits<std::int16_t>::max()) {
    endProgram(messages::overflowIn(reportFile));
  }
  ++count_;
  if (entries_.size() < static_cast<std::size_t>(count_)) {
    entries_.emplace_back();
  }
  entry(count_).instr = instr;
  places_.emplace(instr, count_);
}

void setInstrumentOrder(const std::vector<std::int16_t>& instruments, OrderTable& order) {
  order.clear();
  for (const std::int16_t instr : instruments) {
    order.add(instr);
  }
}

float setDetailPar5(const OrderTable& order, std::int16_t instr) {
  return entryOf(order, instr).size.valueUnlessNegative();
}

float setDetailPar7(const OrderTable& order, std::int16_t instr) {
  return entryOf(order, instr).lines;
}

float setDetailPar11(const OrderTable& order, std::int16_t instr) {
  return entryOf(order, instr).par11;
}

float setDetailBarline(const OrderTable& order, std::int16_t instr) {
  const float lines = entryOf(order, instr).lines;
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
  return lines == 6 ? 13 : 0;
}

MarkedValue setDetailClef(const FirstClefTable& firstClefs, std::int16_t instr) {
  const auto* entry = firstClefs.find(instr);
  return entry == nullptr ? MarkedValue() : entry->firstClefKind;
}

float setDetailClefHite(const FirstClefTable& firstClefs, std::int16_t instr) {
  const auto* entry = firstClefs.find(instr);
  return entry == nullptr ? 0 : entry->firstClefHeight;
}

float setDetailKey(const OrderTable& order, std::int16_t instr) {
  return entryOf(order, instr).key;
}

float setDetailKeyType(const OrderTable& order, std::int16_t instr) {
  return entryOf(order, instr).keyType;
}

float setDetailRestHite(const OrderTable& order, std::int16_t instr) {
  const float lines = entryOf(order, instr).lines;
  if (lines == 1) {
    return -8;
  }
  if (lines == 2 || lines == 3) {
    return -4;
  }
  return lines == 4 ? -2 : 0;
}

float setDetailTime(const OrderTable& order, std::int16_t instr) {
  constexpr float commonTime = 99;
  constexpr float allaBreve = 98;
  const int k = order.find(instr);
  if (k == 0) {
    return 0;
  }
  const OrderEntry& entry = order.entry(k);
  if (entry.timeUp == commonTime || entry.timeUp == 4) {
    return 4;
  }
  if (entry.timeUp == allaBreve) {
    return 2;
  }
  const float quarters = entry.timeDn / 4;
  if (quarters == 0) {
    endProgram(messages::divisionByZero(instr));
  }
  return entry.timeUp / quarters;
}

}  // namespace kiv
