#include "conversion/braces.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/number.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// The systems of a conversion: their braces are collected, and put on the systems that are written.
class Braces : public ::testing::Test {
 protected:
  void collect(std::string_view system) {
    items = tableOf(host, system);
    end = endOf([&] { collectBraces(page, braces); });
  }
  std::string written(std::string_view system) {
    items = tableOf(host, system);
    end = endOf([&] { outputBraces(page, braces); });
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
  const std::string file = "C:\\M\\X1.MUS";
  ItemTable items;
  const SystemPage page{host, file, items};
  BraceTable braces;
  std::optional<int> end;
};

// --- collecting ---

TEST_F(Braces, InstrumentOfTheBracesStaffIsEnteredWithP4AsItsKind) {
  collect("staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\nbarline 2 at 0 spans 3 kind 9\n");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(asText(items), "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\nbarline 2 at 0 spans 3 kind 9\n");
  EXPECT_EQ(kindOf("102"), "3");
  EXPECT_EQ(kindOf("101"), "none");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Braces, BraceMayStandBeforeItsStaffAndAnywhereOnIt) {
  EXPECT_EQ(kindAfter("barline 1 at 500 spans 2 kind 8\nnote 1 at 5\nstaff 1 at 0 instrument 101\n"), "2");
}

TEST_F(Braces, BarlinesOfKindEightAndAboveAreBraces) {
  const std::string staff = "staff 1 at 0 instrument 101\n";
  for (const char* kind : {"8", "8.000001", "9", "40000", "0x7F800000"}) {
    braces = {};
    EXPECT_EQ(kindAfter(staff + "barline 1 at 0 spans 2 kind " + kind), "2") << kind;
  }
  for (const char* kind : {"7.9999995", "7", "0", "-8", "0x7FC00000", "0xFF800000"}) {
    braces = {};
    EXPECT_EQ(kindAfter(staff + "barline 1 at 0 spans 2 kind " + kind), "none") << kind;
  }
}

TEST_F(Braces, ItemsOfOtherTypesAreNoBracesAndNoStaves) {
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument 101\nclef 1 at 0 height 2 kind 8\nitem 14.5 1 0 2 8\n"), "none");
  EXPECT_EQ(kindAfter("item 8.5 1 0 0 0 0 0 0 101\nclef 1 at 0 p9 101\nbarline 1 at 0 spans 2 kind 8 p9 101\n"),
            "none");
}

TEST_F(Braces, BraceHoldsForStavesOfExactlyItsNumber) {
  const std::string staff = "staff 2 at 0 instrument 101\n";
  for (const char* number : {"1", "3", "2.0000002", "-2", "0x7FC00000"}) {
    EXPECT_EQ(kindAfter(staff + "barline " + number + " at 0 spans 5 kind 8\n"), "none") << number;
  }
  EXPECT_EQ(kindAfter("staff -0 at 0 instrument 101\nbarline 0 at 0 spans 5 kind 8\n"), "5");
  EXPECT_EQ(kindAfter("staff 0x7FC00000 at 0 instrument 102\nbarline 0x7FC00000 at 0 spans 5 kind 8\n", "102"), "none");
}

TEST_F(Braces, EveryStaffItemOfTheNumberIsMet) {
  collect(
      "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 2 kind 8\nstaff 1 at 5 instrument 102\n"
      "staff 1 at 9\nstaff 1 at 9 instrument -7.5\n");
  EXPECT_EQ(kindOf("101"), "2");
  EXPECT_EQ(kindOf("102"), "2");
  EXPECT_EQ(kindOf("-7.5"), "2");
}

TEST_F(Braces, StaffWithInstrumentZeroIsNotRecorded) {
  EXPECT_EQ(kindAfter("staff 1 at 0\nbarline 1 at 0 spans 2 kind 8\n", "0"), "none");
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument -0\nbarline 1 at 0 spans 2 kind 8\n", "-0"), "none");
  EXPECT_TRUE(braces.kinds.empty());
}

TEST_F(Braces, KindIsRoundedHalvesToEven) {
  const std::pair<std::string, std::string> kinds[] = {{"2.5", "2"},        {"3.5", "4"},           {"-0.4", "0"},
                                                       {"2.6", "3"},        {"-32768.5", "-32768"}, {"0", "0"},
                                                       {"32767.4", "32767"}};
  for (const auto& [spans, kind] : kinds) {
    braces = {};
    EXPECT_EQ(kindAfter("staff 1 at 0 instrument 101\nbarline 1 at 0 kind 8 spans " + spans), kind) << spans;
  }
}

TEST_F(Braces, InstrumentKeepsItsFirstKind) {
  EXPECT_EQ(kindAfter("staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 101\nbarline 1 at 9 spans 4 kind 9\n"
                      "barline 1 at 0 spans 5 kind 8\nbarline 2 at 0 spans 6 kind 8\n"),
            "4")
      << "the first in the order of the braces, not of the staves";
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 7 kind 8\n"), "4") << "in later systems too";
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument 102\nbarline 1 at 0 kind 8\nbarline 1 at 0 spans 3 kind 8\n", "102"),
            "0")
      << "a kind of 0 is one as well";
}

TEST_F(Braces, KindThatSixteenBitsDoNotHoldEndsTheProgram) {
  for (const char* kind : {"32767.5", "40000", "-32769", "0x7FC00000", "0x7F800000"}) {
    braces = {};
    collect(std::string("staff 1 at 0 instrument 101\nbarline 1 at 0 kind 8 spans ") + kind);
    expectEnd("Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 2");
  }
}

TEST_F(Braces, KindThatNobodyNeedsMayBeAnything) {
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument 101\nstaff 2 at 0\nbarline 1 at 0 spans 2 kind 8\n"
                      "barline 1 at 0 spans 40000 kind 8\nbarline 2 at 0 spans 40000 kind 8\n"
                      "barline 3 at 0 spans 40000 kind 8\nbarline 1 at 0 spans 40000 kind 7\n"),
            "2");
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 40000 kind 8\n"), "2");
}

TEST_F(Braces, InstrumentThatIsNoNumberIsNeverFoundInTheTable) {
  collect("staff 1 at 0 instrument 0x7FC00000\nbarline 1 at 0 spans 2 kind 8\n");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(kindOf("0x7FC00000"), "none");
  collect("staff 1 at 0 instrument 0x7FC00000\nbarline 1 at 0 spans 40000 kind 8\n");
  expectEnd("Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 2");
}

TEST_F(Braces, SecondBraceOfAnInstrumentThatIsNoNumberIsEnteredLikeTheFirst) {
  collect("staff 1 at 0 instrument 0x7FC00000\nbarline 1 at 0 spans 2 kind 8\nbarline 1 at 0 spans 40000 kind 8\n");
  expectEnd("Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 3");
}

TEST_F(Braces, RowsBehindTheTableDoNotCount) {
  items = tableOf(host, "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 2 kind 8\nstaff 1 at 0 instrument 102\n");
  items.restart();
  collectBraces(page, braces);
  EXPECT_TRUE(braces.kinds.empty());
}

TEST_F(Braces, DiscardedBraceDoesNotCount) {
  items = tableOf(host, "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 2 kind 8\n");
  items.itemPar(2, par::type) = type::deleted;
  collectBraces(page, braces);
  EXPECT_TRUE(braces.kinds.empty());
}

// --- writing ---

TEST_F(Braces, EveryStaffOfABracedInstrumentGetsABraceAtPositionZero) {
  collect("staff 1 at 0 instrument 101\nbarline 1 at 7 spans 3 kind 9 p10 5 p11 1\n");
  EXPECT_EQ(written("staff 3 at 40 size 2 lines 1 instrument 101 p11 4\n"
                    "note 3 at 50 height 4 p9 101\n"
                    "staff 2 at 40 instrument 102\n"
                    "barline 1 at 40 spans 3\n"
                    "staff 1.5 at 40 instrument 101 p20 1\n"
                    "staff 1 at 40\n"),
            "staff 3 at 40 size 2 lines 1 instrument 101 p11 4\n"
            "note 3 at 50 height 4 p9 101\n"
            "staff 2 at 40 instrument 102\n"
            "barline 1 at 40 spans 3\n"
            "staff 1.5 at 40 instrument 101 p20 1\n"
            "staff 1 at 40\n"
            "barline 3 at 0 spans 3 kind 8\n"
            "barline 1.5 at 0 spans 3 kind 8\n");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Braces, InstrumentFirstBracedInSystem3HasBracesFromThenOn) {
  const std::string plain = "staff 1 at 0 instrument 101\n";
  const std::string braced = plain + "barline 1 at 0 spans 3 kind 8\n";
  EXPECT_EQ(kindAfter(plain), "none");
  EXPECT_EQ(kindAfter(plain), "none");
  EXPECT_EQ(kindAfter(braced), "3");
  EXPECT_EQ(kindAfter(plain), "3");
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument 102\nbarline 1 at 0 spans 2 kind 8\n"), "3");
}

TEST_F(Braces, EveryInstrumentHasItsOwnKind) {
  collect(
      "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\nbarline 2 at 0 spans 2 kind 8\n"
      "barline 1 at 0 spans 1 kind 8\n");
  EXPECT_EQ(written("staff 1 at 0 instrument 102\nstaff 2 at 0 instrument 101\n"),
            "staff 1 at 0 instrument 102\nstaff 2 at 0 instrument 101\n"
            "barline 1 at 0 spans 2 kind 8\nbarline 2 at 0 spans 1 kind 8\n");
}

TEST_F(Braces, KindZeroIsWrittenToo) {
  collect("staff 1 at 0 instrument 101\nbarline 1 at 0 kind 8\n");
  EXPECT_EQ(written("staff 1 at 0 instrument 101\n"), "staff 1 at 0 instrument 101\nbarline 1 at 0 kind 8\n");
}

TEST_F(Braces, InstrumentsAreComparedExactly) {
  collect("staff 1 at 0 instrument 101.5\nbarline 1 at 0 spans 3 kind 8\n");
  for (const char* other : {"101", "102", "101.50001", "-101.5", "0", "0x7FC00000"}) {
    EXPECT_EQ(kindOf(other), "none") << other;
  }
  EXPECT_EQ(kindOf("101.5"), "3");
}

TEST_F(Braces, OnlyStaffItemsGetBraces) {
  collect("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 3 kind 8\n");
  const std::string others = "note 1 at 5 p9 101\nitem 8.5 1 at 0 p9 101\nbarline 1 at 0 kind 8 p9 101\n";
  EXPECT_EQ(written("note 1 at 5 p9 101\nitem 8.5 1 0 0 0 0 0 0 101\nbarline 1 at 0 kind 8 p9 101\n"), others);
}

TEST_F(Braces, EmptyTableOfBracesWritesNone) {
  EXPECT_EQ(written("staff 1 at 0 instrument 101\nstaff 2 at 0\n"), "staff 1 at 0 instrument 101\nstaff 2 at 0\n");
}

TEST_F(Braces, RowsLeftBehindTheTableNeitherCountNorShowThrough) {
  collect("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 3 kind 8\n");
  items = tableOf(host,
                  "staff 1 at 0 instrument 101\ncountedtext 9 at 9 p6 9 p9 9 p11 9 \"old\"\n"
                  "staff 9 at 9 instrument 101\n");
  items.restart();
  items.store_item(host, {{0, type::staff, 1, 0, 0, 0, 0, 0, 0, 101}, ""});
  outputBraces(page, braces);
  EXPECT_EQ(asText(items), "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 3 kind 8\n");
}

TEST_F(Braces, TableThatOverflowsEndsTheProgram) {
  collect("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 3 kind 8\n");
  items.restart();
  while (items.itemCount() < itemLimit - 1) {
    items.store_item(host, {{0, type::note, 1}, ""});
  }
  items.itemPar(itemLimit - 1, par::type) = type::staff;
  items.itemPar(itemLimit - 1, par::instrument) = 101;
  end = endOf([&] { outputBraces(page, braces); });
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(items.itemCount(), itemLimit);
  EXPECT_EQ(items.itemPar(itemLimit, par::kind), 8);
  end = endOf([&] { outputBraces(page, braces); });
  expectEnd("MUS file too big for operation. Hit OK to terminate.");
}

// --- against the rules as they are put: a list of instruments and their kinds ---

using PlainTable = std::vector<std::pair<float, std::int16_t>>;

const std::pair<float, std::int16_t>* plainEntry(const PlainTable& table, float instrument) {
  for (const auto& entry : table) {
    if (entry.first == instrument) {
      return &entry;
    }
  }
  return nullptr;
}

void plainCollect(const ItemTable& items, PlainTable& table) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.itemPar(i, 1) != 14 || !(items.itemPar(i, 5) >= 8)) {
      continue;
    }
    for (int j = 1; j <= items.itemCount(); ++j) {
      if (items.itemPar(j, 1) == 8 && items.itemPar(j, 2) == items.itemPar(i, 2) && items.itemPar(j, 9) != 0 &&
          plainEntry(table, items.itemPar(j, 9)) == nullptr) {
        table.emplace_back(items.itemPar(j, 9), static_cast<std::int16_t>(items.itemPar(i, 4)));
      }
    }
  }
}

void plainOutput(Host& host, ItemTable& items, const PlainTable& table) {
  for (int i = 1, before = items.itemCount(); i <= before; ++i) {
    const auto* entry = items.itemPar(i, 1) == 8 ? plainEntry(table, items.itemPar(i, 9)) : nullptr;
    if (entry != nullptr) {
      items.store_item(host, {{0, 14, items.itemPar(i, 2), 0, static_cast<float>(entry->second), 8}, ""});
    }
  }
}

std::vector<Item> randomSystem(Dice& dice) {
  const float types[] = {type::staff, type::staff, type::barline, type::barline, type::note};
  const float numbers[] = {1, 2, 3, 0, -0.0F, 2.5F, notANumber};
  const float kinds[] = {0, 7, 8, 8, 9, notANumber};
  const float instruments[] = {101, 102, 103, 104, 105, 106, 0, -0.0F, 101.5F, notANumber};
  std::vector<Item> items;
  for (std::uint32_t count = dice.below(12); count > 0; --count) {
    Item item{{0, types[dice.below(std::size(types))], numbers[dice.below(std::size(numbers))], 5}, ""};
    item.par[4] = static_cast<float>(dice.below(100));
    item.par[5] = kinds[dice.below(std::size(kinds))];
    item.par[9] = instruments[dice.below(std::size(instruments))];
    items.push_back(item);
  }
  return items;
}

TEST_F(Braces, AnyConversionsGiveWhatTheRulesSay) {
  Dice dice(56);
  PlainTable plainTable;
  ItemTable plain;
  for (int round = 0; round < 1000; ++round) {
    if (round % 8 == 0) {
      braces = {};
      plainTable.clear();
    }
    items.restart();
    plain.restart();
    for (const Item& item : randomSystem(dice)) {
      items.store_item(host, item);
      plain.store_item(host, item);
    }
    collectBraces(page, braces);
    plainCollect(plain, plainTable);
    outputBraces(page, braces);
    plainOutput(host, plain, plainTable);
    ASSERT_EQ(asText(items), asText(plain));
  }
}

}  // namespace
}  // namespace kiv::test
