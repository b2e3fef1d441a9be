#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "base/number.h"
#include "conversion/braces.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {

/// The systems of a conversion: their braces are collected, and put on the systems that are written.
class Braces : public ::testing::Test {
 protected:
  void collect(std::string_view system) {
    items = tableOf(host, system);
    end = endOf(host, [&] { collectBraces(items, braces); });
  }
  std::string written(std::string_view system) {
    items = tableOf(host, system);
    end = endOf(host, [&] { outputBraces(items, braces); });
    return asText(items);
  }
  /// The kind of the brace that a system gives the instrument; "none" when it gives none.
  std::string kindAfter(std::string_view system, std::string_view instrument = "101") {
    collect(system);
    EXPECT_EQ(end, std::nullopt) << system;
    return kindOf(instrument);
  }
  std::string kindOf(std::string_view instrument) {
    written("staff 1 at 0 instrument " + std::string(instrument) + "\n");
    return items.itemCount() == 1 ? "none" : generalNumber(items.itemPar(2, par::braceKind));
  }
  void expectEnd(const std::string& text) {
    EXPECT_EQ(end, 1);
    EXPECT_EQ(host.messages, std::vector{critical(text)});
    host.messages.clear();
  }

  FakeHost host;
  ItemTable items;
  BraceTable braces;
  std::optional<int> end;
};

}  // namespace kiv::test
