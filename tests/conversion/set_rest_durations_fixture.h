#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "conversion/set_rest_durations.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {

inline const std::string twoStaves = "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102 p20 1\n";
inline const std::string fourFour = "timesignature 2 at 5 upper 4 lower 4\n";

inline std::string unhandled(const std::string& signature) {
  return "Time signature with up/dn=" + signature + " cannot be handled by this program. Contact development.";
}

/// Systems whose instrument 102 has a rest staff to be filled.
class SetRestDurations : public ::testing::Test {
 protected:
  SetRestDurations() { setInstrumentOrder({101, 102, 103}, order); }

  void setTime(int place, float upper, float lower) {
    order.entry(place).timeUp = upper;
    order.entry(place).timeDn = lower;
  }
  void fill(const std::string& system, const std::vector<float>& barlinesAt, std::int16_t instrument = 102) {
    BarlineList barlines;
    for (const float position : barlinesAt) {
      barlines.push_back({position, 0});
    }
    items = tableOf(host, system);
    before = items.itemCount();
    end = endOf(host, [&] { setRestDurations(items, instrument, order, barlines); });
  }
  /// The items that were added.
  std::string added(const std::string& system, const std::vector<float>& barlinesAt, std::int16_t instrument = 102) {
    fill(system, barlinesAt, instrument);
    EXPECT_EQ(end, std::nullopt) << system;
    ItemTable table;
    for (int i = before + 1; i <= items.itemCount(); ++i) {
      table.store_item(items.item(i));
    }
    return asText(table);
  }
  /// How long the rest is of a bar under a time signature.
  float lengthOf(const std::string& upperAndLower) {
    fill(twoStaves + "timesignature 2 at 5 " + upperAndLower + "\nnote 1 at 20\n", {0, 100});
    EXPECT_EQ(end, std::nullopt) << upperAndLower;
    return items.itemPar(items.itemCount(), par::duration);
  }
  void expectEnd(const std::string& system, const std::vector<float>& barlinesAt, const std::string& text) {
    host.messages.clear();
    fill(system, barlinesAt);
    EXPECT_EQ(end, 1) << system;
    EXPECT_EQ(host.messages, std::vector{critical(text)}) << system;
  }

  FakeHost host;
  ItemTable items;
  OrderTable order;
  int before = 0;
  std::optional<int> end;
};

}  // namespace kiv::test
