#pragma once

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "base/exact_number.h"
#include "conversion/barlines.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {

inline constexpr float infinity = std::numeric_limits<float>::infinity();
inline constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// Position and kind of each, as "50/0 90/2".
inline std::string listed(const BarlineList& barlines) {
  std::string text;
  for (const ModelBarline& barline : barlines) {
    text += (text.empty() ? "" : " ") + exactNumber(barline.position) + "/" + std::to_string(barline.kind);
  }
  return text;
}

/// Systems on their way to common barlines.
class Barlines : public ::testing::Test {
 protected:
  Barlines() { setInstrumentOrder({101, 102, 103}, order); }

  std::string collected(std::string_view system) {
    items = tableOf(host, system);
    BarlineList barlines;
    end = endOf(host, [&] { barlines = collectBarlines(items); });
    return listed(barlines);
  }
  std::string sorted(BarlineList barlines) {
    sortBarlines(barlines);
    return listed(barlines);
  }
  void normalizeTable(const BarlineList& barlines) {
    end = endOf(host, [&] { normalizeBarlines(items, order, barlines); });
  }
  std::string normalized(std::string_view system, const BarlineList& barlines) {
    items = tableOf(host, system);
    normalizeTable(barlines);
    EXPECT_EQ(end, std::nullopt) << system;
    return asText(items);
  }
  void expectEnd(const std::string& text) {
    EXPECT_EQ(end, 1);
    EXPECT_EQ(host.messages, std::vector{critical(text)});
    host.messages.clear();
  }

  FakeHost host;
  ItemTable items;
  OrderTable order;
  std::optional<int> end;
};

}  // namespace kiv::test
