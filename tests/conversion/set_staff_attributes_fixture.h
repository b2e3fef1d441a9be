#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "base/exact_number.h"
#include "conversion/set_staff_attributes.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {

/// What the table knows of an instrument: every column that is not 0.
inline std::string known(const OrderEntry& entry) {
  const std::pair<const char*, float> columns[] = {{"size", entry.size.stored()},    {"lines", entry.lines},
                                                   {"par11", entry.par11},           {"clef", entry.clef.stored()},
                                                   {"clefHeight", entry.clefHeight}, {"key", entry.key},
                                                   {"keyType", entry.keyType},       {"timeUp", entry.timeUp},
                                                   {"timeDn", entry.timeDn},         {"present", entry.present}};
  std::string text = std::to_string(entry.instr) + ":";
  for (const auto& [name, value] : columns) {
    if (value != 0) {
      text += std::string(" ") + name + " " + exactNumber(value);
    }
  }
  return text;
}

/// Systems of a conversion, and what the order table remembers of them.
class SetStaffAttributes : public ::testing::Test {
 protected:
  SetStaffAttributes() { setInstrumentOrder({101, 102, 103}, order); }

  void collect(std::string_view system) { setStaffAttributes(tableOf(host, system), order); }
  std::string of(std::int16_t instr) const { return known(order.entry(order.find(instr))); }
  /// What a system gives to instrument 101 in a new table.
  std::string collected(std::string_view system) {
    order = {};
    setInstrumentOrder({101, 102, 103}, order);
    collect(system);
    return of(101);
  }

  FakeHost host;
  OrderTable order;
};

}  // namespace kiv::test
