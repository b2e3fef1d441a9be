#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <vector>

#include <gtest/gtest.h>

#include "conversion/order_table.h"
#include "tests/support/fake_host.h"

namespace kiv {

inline void PrintTo(const OrderEntry& entry, std::ostream* out) {
  *out << entry.instr << ": present " << entry.present << " size " << entry.size.stored() << " lines " << entry.lines
       << " par11 " << entry.par11 << " clef " << entry.clef.stored() << " height " << entry.clefHeight << " key "
       << entry.key << " type " << entry.keyType << " time " << entry.timeUp << "/" << entry.timeDn;
}

}  // namespace kiv

namespace kiv::test {

using Instruments = std::vector<std::int16_t>;

/// The parameter that is stored as this sum.
inline MarkedValue stored(float sum) {
  return MarkedValue(sum - 1000);
}

class OrderTableTest : public ::testing::Test {
 protected:
  /// The order of a conversion over a report of these instruments.
  void convert(const Instruments& instruments) {
    end = endOf(host, [&] { setInstrumentOrder(instruments, order); });
  }
  Instruments instruments() const {
    Instruments found;
    for (int k = 1; k <= order.count(); ++k) {
      found.push_back(order.entry(k).instr);
    }
    return found;
  }
  /// An instrument of which nothing is known but the identifier.
  static OrderEntry unknown(std::int16_t instr) {
    OrderEntry entry;
    entry.instr = instr;
    return entry;
  }
  /// An entry that has a value of its own in every column but the identifier. Size and clef are given as stored.
  static OrderEntry filled(std::int16_t instr, float value) {
    return {instr,     3,         stored(value), value + 1, value + 2, stored(value + 3),
            value + 4, value + 5, value + 6,     value + 7, value + 8};
  }

  FakeHost host;
  OrderTable order;
  std::optional<int> end;
};

}  // namespace kiv::test
