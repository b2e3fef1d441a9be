#include "conversion/barlines.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/exact_number.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// Position and kind of each, as "50/0 90/2".
std::string listed(const BarlineList& barlines) {
  std::string text;
  for (const ModelBarline& barline : barlines) {
    text += (text.empty() ? "" : " ") + exactNumber(barline.position) + "/" + std::to_string(barline.kind);
  }
  return text;
}

/// Systems on their way to common barlines.
class Barlines : public ::testing::Test {
 protected:
  Barlines() { setInstrumentOrder(host, {101, 102, 103}, order); }

  std::string collected(std::string_view system) {
    items = tableOf(host, system);
    BarlineList barlines;
    end = endOf([&] { barlines = collectBarlines(page); });
    return listed(barlines);
  }
  std::string sorted(BarlineList barlines) {
    sortBarlines(host, barlines);
    return listed(barlines);
  }
  void normalizeTable(const BarlineList& barlines) {
    end = endOf([&] { normalizeBarlines(page, order, barlines); });
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
  const std::string file = "C:\\M\\X1.MUS";
  ItemTable items;
  const SystemPage page{host, file, items};
  OrderTable order;
  std::optional<int> end;
};

// --- the barlines of staff 1 ---

TEST_F(Barlines, ThoseOfStaffOneAreCollectedInItemOrder) {
  EXPECT_EQ(collected("staff 1 at 0 instrument 101\nbarline 1 at 90 kind 2\nbarline 2 at 10 kind 3\nnote 1 at 20\n"
                      "barline 1 at 5.5 spans 2\nbarline 1 at -50 spans 4 kind 7\nstaff 2 at 0 instrument 102\n"),
            "90/2 5.5/0 -50/7");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(Barlines, TwoAtOnePositionBothEnterTheList) {
  EXPECT_EQ(collected("barline 1 at 50 kind 1\nbarline 1 at 50 kind 0\nbarline 1 at 50 kind 1\n"), "50/1 50/0 50/1");
}

TEST_F(Barlines, BraceOrBracketNeverEntersTheList) {
  EXPECT_EQ(collected("barline 1 at 1 kind 8\nbarline 1 at 2 kind 9\nbarline 1 at 3 kind 7\nbarline 1 at 4 kind 8.5\n"
                      "barline 1 at 5 kind 40000\nbarline 1 at 6 kind 0x7F800000\n"),
            "3/7");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(Barlines, KindBelowEightEntersTheListRoundedHalvesToEven) {
  EXPECT_EQ(collected("barline 1 at 1 kind 7.9999995\nbarline 1 at 2 kind 7.5\nbarline 1 at 3 kind 6.5\n"
                      "barline 1 at 4 kind 0.5\nbarline 1 at 5 kind -1.5\nbarline 1 at 6 kind -32768.5\n"),
            "1/8 2/8 3/6 4/0 5/-2 6/-32768");
}

TEST_F(Barlines, KindThatIsNoNumberIsNotBelowEight) {
  EXPECT_EQ(collected("barline 1 at 1 kind 0x7FC00000\n"), "");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(Barlines, KindThatSixteenBitsDoNotHoldEndsTheProgram) {
  for (const char* kind : {"-32769", "-40000", "0xFF800000"}) {
    collected(std::string("barline 2 at 1 kind -40000\nnote 1 at 1 p5 -40000\nbarline 1 at 1 kind ") + kind);
    expectEnd("Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 3");
  }
}

TEST_F(Barlines, OnlyBarlinesOfExactlyStaffOneCount) {
  EXPECT_EQ(collected("barline 1.0000001 at 1\nbarline 0 at 2\nbarline -1 at 3\nbarline 11 at 4\nitem 14.5 1 5\n"
                      "note 1 at 6\nbarline 0x7FC00000 at 7\nitem 13 1 8\nbarline 1 at 9\n"),
            "9/0");
}

TEST_F(Barlines, DiscardedBarlinesAndThoseBehindTheTableDoNotCount) {
  items = tableOf(host, "barline 1 at 1\nbarline 1 at 2\nbarline 1 at 3\n");
  items.restart();
  items.store_item(host, {{0, type::deleted, 1, 1}, ""});
  items.store_item(host, {{0, type::barline, 1, 2}, ""});
  EXPECT_EQ(listed(collectBarlines(page)), "2/0");
}

TEST_F(Barlines, SystemWithoutBarlinesGivesAnEmptyList) {
  EXPECT_EQ(collected("staff 1 at 0 instrument 101\nbarline 2 at 5\n"), "");
  EXPECT_EQ(collected(""), "");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Barlines, PositionIsTakenWhateverItIs) {
  EXPECT_EQ(collected("barline 1 at 0x7FC00000\nbarline 1 at 0xFF800000\nbarline 1 at -0 kind 1\n"),
            "0x7FC00000/0 0xFF800000/0 -0/1");
}

// --- their order ---

TEST_F(Barlines, SortAscendsByPositionAndTakesTheKindAlong) {
  EXPECT_EQ(sorted({{90, 1}, {-5, 2}, {50, 3}, {0.5F, 4}}), "-5/2 0.5/4 50/3 90/1");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Barlines, SortKeepsTheOrderOfEqualPositions) {
  EXPECT_EQ(sorted({{50, 3}, {10, 9}, {50, 1}, {10, 0}, {50, 2}}), "10/9 10/0 50/3 50/1 50/2");
  EXPECT_EQ(sorted({{0, 2}, {-0.0F, 1}, {0, 0}}), "0/2 -0/1 0/0");
}

TEST_F(Barlines, SortComparesExactly) {
  EXPECT_EQ(sorted({{50.000004F, 1}, {50, 2}, {infinity, 3}, {-infinity, 4}}),
            "0xFF800000/4 50/2 50.000004/1 0x7F800000/3");
}

TEST_F(Barlines, SortOfOneOrNoneChangesNothing) {
  EXPECT_EQ(sorted({}), "");
  EXPECT_EQ(sorted({{50, 3}}), "50/3");
}

TEST_F(Barlines, SortDoesNotCarryABarlinePastAPositionThatIsNoNumber) {
  EXPECT_EQ(sorted({{3, 0}, {notANumber, 1}, {2, 2}, {1, 3}}), "3/0 0x7FC00000/1 1/3 2/2");
}

/// Passes over neighbours until one of them exchanges nothing.
void sortByExchanges(BarlineList& barlines) {
  bool exchanged = true;
  while (exchanged) {
    exchanged = false;
    for (std::size_t j = 1; j < barlines.size(); ++j) {
      if (barlines[j - 1].position > barlines[j].position) {
        std::swap(barlines[j - 1], barlines[j]);
        exchanged = true;
      }
    }
  }
}

TEST_F(Barlines, AnyListIsSortedAsByExchanges) {
  const float positions[] = {0, -0.0F, 1, 1.0000001F, 2, 50, -5, infinity, -infinity, notANumber};
  Dice dice(55);
  for (int round = 0; round < 1000; ++round) {
    const std::size_t choice = std::size(positions) - (round % 2 == 0 ? 0 : 1);
    BarlineList barlines;
    for (std::uint32_t count = dice.below(20); count > 0; --count) {
      barlines.push_back({positions[dice.below(choice)], static_cast<std::int16_t>(barlines.size())});
    }
    BarlineList plain = barlines;
    sortByExchanges(plain);
    ASSERT_EQ(sorted(barlines), listed(plain)) << "of " << listed(barlines);
  }
}

// --- the same barlines on every staff ---

TEST_F(Barlines, EveryStaffGetsTheModelBarlinesButTheFirstWhichSpansAllStaves) {
  EXPECT_EQ(normalized("staff 1 at 0 lines 5 instrument 101\n"
                       "barline 1 at 3 spans 2 kind 1\n"
                       "note 1 at 20\n"
                       "barline 1 at 50 spans 1 kind 2 p10 4 p11 13\n"
                       "staff 2 at 0 lines 5 instrument 102\n"
                       "barline 2 at 51 spans 1\n"
                       "staff 3 at 0 lines 5 instrument 103 p20 1\n",
                       {{3, 1}, {50, 2}, {90, 0}}),
            "staff 1 at 0 lines 5 instrument 101\n"
            "item 999 1 at 3 p4 2 p5 1\n"
            "note 1 at 20\n"
            "item 999 1 at 50 p4 1 p5 2 p10 4 p11 13\n"
            "staff 2 at 0 lines 5 instrument 102\n"
            "item 999 2 at 51 p4 1\n"
            "staff 3 at 0 lines 5 instrument 103 p20 1\n"
            "barline 1 at 50 spans 1 kind 2\n"
            "barline 1 at 90 spans 1\n"
            "barline 2 at 50 spans 1 kind 2\n"
            "barline 2 at 90 spans 1\n"
            "barline 3 at 50 spans 1 kind 2\n"
            "barline 3 at 90 spans 1\n"
            "barline 1 at 3 spans 3 kind 1\n");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Barlines, BracesAreDiscardedWithTheBarlinesAndNothingElseIs) {
  EXPECT_EQ(normalized("barline 1 at 0 spans 3 kind 8\nbarline 2 at 0 kind 9\nbarline 5 at 0\nitem 14.5 1 5\n"
                       "item 13 1 5\ncountedtext 1 at 5 \"a\"\nstaff 1 at 0 instrument 101\n",
                       {{3, 0}}),
            "item 999 1 at 0 p4 3 p5 8\nitem 999 2 at 0 p5 9\nitem 999 5 at 0\nitem 14.5 1 at 5\n"
            "item 13 1 at 5\ncountedtext 1 at 5 characters 1 \"a\"\nstaff 1 at 0 instrument 101\n"
            "barline 1 at 3 spans 1\n");
}

TEST_F(Barlines, StavesComeInItemOrderWhateverTheirNumbersAre) {
  EXPECT_EQ(normalized("staff 3 at 0 instrument 101\nstaff 2.5 at 0 instrument 101\nstaff 3 at 9 instrument 103\n",
                       {{3, 0}, {50, 0}}),
            "staff 3 at 0 instrument 101\nstaff 2.5 at 0 instrument 101\nstaff 3 at 9 instrument 103\n"
            "barline 3 at 50 spans 1\nbarline 2.5 at 50 spans 1\nbarline 3 at 50 spans 1\n"
            "barline 1 at 3 spans 3\n");
}

TEST_F(Barlines, TwoAtOnePositionAreCopiedToEveryStaff) {
  EXPECT_EQ(normalized("staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\n", {{3, 0}, {50, 1}, {50, 0}}),
            "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\n"
            "barline 1 at 50 spans 1 kind 1\nbarline 1 at 50 spans 1\n"
            "barline 2 at 50 spans 1 kind 1\nbarline 2 at 50 spans 1\n"
            "barline 1 at 3 spans 2\n");
}

TEST_F(Barlines, SecondBarlineAtTheLeftEdgeIsLikeAnyOther) {
  EXPECT_EQ(normalized("staff 1 at 0 instrument 101\n", {{3, 1}, {3, 2}}),
            "staff 1 at 0 instrument 101\nbarline 1 at 3 spans 1 kind 2\nbarline 1 at 3 spans 1 kind 1\n");
}

TEST_F(Barlines, ListOfOneGivesTheSystemBarlineOnly) {
  EXPECT_EQ(normalized("staff 2 at 0 instrument 101\nbarline 2 at 50\n", {{3, -4}}),
            "staff 2 at 0 instrument 101\nitem 999 2 at 50\nbarline 1 at 3 spans 1 kind -4\n");
}

TEST_F(Barlines, PositionAndKindAreWrittenAsListed) {
  EXPECT_EQ(normalized("staff 1 at 0 instrument 101\n", {{-3, 32767}, {notANumber, -32768}, {infinity, 8}}),
            "staff 1 at 0 instrument 101\nbarline 1 at 0x7FC00000 spans 1 kind -32768\n"
            "barline 1 at 0x7F800000 spans 1 kind 8\nbarline 1 at -3 spans 1 kind 32767\n");
}

TEST_F(Barlines, SystemBarlineOfNoStavesSpansNone) {
  EXPECT_EQ(normalized("item 8.5 1 0\nclef 1 at 2\n", {{3, 0}, {50, 0}}),
            "item 8.5 1 at 0\nclef 1 at 2\nbarline 1 at 3\n");
}

TEST_F(Barlines, StaffOfOneLineGetsP11OfOneAndP10OfFive) {
  order.entry(1).lines = 1;
  EXPECT_EQ(normalized("staff 1 at 0 lines 5 instrument 101\nstaff 2 at 0 lines 1 instrument 102\n", {{3, 0}, {50, 0}}),
            "staff 1 at 0 lines 5 instrument 101\nstaff 2 at 0 lines 1 instrument 102\n"
            "barline 1 at 50 spans 1 p10 5 p11 1\nbarline 2 at 50 spans 1\n"
            "barline 1 at 3 spans 2\n")
      << "the lines of the order table count, and the system barline has neither";
}

TEST_F(Barlines, OtherNumbersOfLinesGiveTheirCodeWithoutP10) {
  const std::pair<float, std::string> codes[] = {{2, " p11 5"},  {3, " p11 7"}, {4, " p11 9"}, {5, ""},
                                                 {6, " p11 13"}, {7, ""},       {0, ""},       {-1, ""}};
  for (const auto& [lines, code] : codes) {
    order.entry(1).lines = lines;
    EXPECT_EQ(normalized("staff 1 at 0 instrument 101\n", {{3, 0}, {50, 2}}),
              "staff 1 at 0 instrument 101\nbarline 1 at 50 spans 1 kind 2" + code + "\nbarline 1 at 3 spans 1\n")
        << lines;
  }
}

TEST_F(Barlines, InstrumentOfAStaffIsRoundedHalvesToEven) {
  order.entry(2).lines = 1;
  for (const char* instrument : {"101.5", "102.5", "101.6", "102.4"}) {
    EXPECT_EQ(normalized(std::string("staff 1 at 0 instrument ") + instrument, {{3, 0}, {50, 0}}),
              std::string("staff 1 at 0 instrument ") + instrument +
                  "\nbarline 1 at 50 spans 1 p10 5 p11 1\nbarline 1 at 3 spans 1\n");
  }
}

TEST_F(Barlines, InstrumentOutsideTheOrderTableHasBarlinesOfFiveLines) {
  EXPECT_EQ(normalized("staff 1 at 0 lines 1 instrument 7\nstaff 2 at 0\n", {{3, 0}, {50, 0}}),
            "staff 1 at 0 lines 1 instrument 7\nstaff 2 at 0\n"
            "barline 1 at 50 spans 1\nbarline 2 at 50 spans 1\nbarline 1 at 3 spans 2\n");
}

TEST_F(Barlines, StaffBarlineIsAsLikeAsTheModelAllows) {
  order.entry(1).lines = 1;
  const Item barline = staffBarline(order, 101, 4, {7.5F, 3});
  EXPECT_EQ(barline, (Item{{0, 14, 4, 7.5F, 1, 3, 0, 0, 0, 0, 5, 1}, ""}));
  EXPECT_EQ(staffBarline(order, 103, 1, {0, 0}), (Item{{0, 14, 1, 0, 1}, ""}));
}

TEST_F(Barlines, RowsLeftBehindTheTableNeitherCountNorShowThrough) {
  items = tableOf(host,
                  "staff 1 at 0 instrument 101\ncountedtext 9 at 9 p4 9 p6 9 p10 9 p11 9 \"old\"\n"
                  "staff 9 at 9 p5 9 instrument 101 p13 9 p20 9\nstaff 9 at 9 instrument 103\nbarline 1 at 7\n");
  items.restart();
  items.store_item(host, {{0, type::staff, 1, 0, 0, 0, 0, 0, 0, 101}, ""});
  normalizeTable({{3, 0}, {50, 0}});
  EXPECT_EQ(asText(items), "staff 1 at 0 instrument 101\nbarline 1 at 50 spans 1\nbarline 1 at 3 spans 1\n");
  EXPECT_EQ(items.itemPar(5, par::type), type::barline) << "rows behind the table stay";
}

// --- failures ---

TEST_F(Barlines, WithoutAnyBarlineTheProgramEnds) {
  items = tableOf(host, "staff 1 at 0 instrument 101\nbarline 1 at 0 kind 8\n");
  normalizeTable({});
  expectEnd("Run-time error: Subscript out of range\r\nC:\\M\\X1.MUS");
  EXPECT_EQ(items.itemCount(), 2);
}

TEST_F(Barlines, InstrumentThatSixteenBitsDoNotHoldEndsTheProgram) {
  for (const char* instrument : {"32767.5", "40000", "-32769", "0x7FC00000"}) {
    items = tableOf(host, std::string("staff 1 at 0 instrument 101\nstaff 2 at 0 instrument ") + instrument);
    normalizeTable({{3, 0}, {50, 0}});
    expectEnd("Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 2");
    EXPECT_EQ(items.itemCount(), 3);
  }
}

TEST_F(Barlines, InstrumentIsNotAskedForWithoutABarlineForTheStaff) {
  EXPECT_EQ(normalized("staff 1 at 0 instrument 40000\n", {{3, 0}}),
            "staff 1 at 0 instrument 40000\nbarline 1 at 3 spans 1\n");
}

TEST_F(Barlines, TableThatOverflowsEndsTheProgram) {
  items = tableOf(host, "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\n");
  while (items.itemCount() < itemLimit - 3) {
    items.store_item(host, {{0, type::note, 1}, ""});
  }
  ItemTable tooFull = items;
  normalizeTable({{3, 0}, {50, 0}});
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(items.itemCount(), itemLimit);
  tooFull.store_item(host, {{0, type::note, 1}, ""});
  items = tooFull;
  normalizeTable({{3, 0}, {50, 0}});
  expectEnd("MUS file too big for operation. Hit OK to terminate.");
}

}  // namespace
}  // namespace kiv::test
