#include "conversion/barlines.h"

#include <cstdint>
#include <utility>

#include <gtest/gtest.h>

#include "tests/conversion/barlines_fixture.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

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
    expectEnd("Run-time error: Overflow\r\nC:\\TABLE.MUS, item 3");
  }
}

TEST_F(Barlines, OnlyBarlinesOfExactlyStaffOneCount) {
  EXPECT_EQ(collected("barline 1.0000001 at 1\nbarline 0 at 2\nbarline -1 at 3\nbarline 11 at 4\nitem 14.5 1 5\n"
                      "note 1 at 6\nbarline 0x7FC00000 at 7\nitem 13 1 8\nbarline 1 at 9\n"),
            "9/0");
}

TEST_F(Barlines, DiscardedBarlinesAndThoseBeyondTheTableDoNotCount) {
  items = tableOf(host, "barline 1 at 1\nbarline 1 at 2\nbarline 1 at 3\n");
  items.clear();
  items.store_item(Item(ItemType::deleted, 1, 1));
  items.store_item(Item(ItemType::barline, 1, 2));
  EXPECT_EQ(listed(collectBarlines(items)), "2/0");
}

TEST_F(Barlines, SystemWithoutBarlinesGivesAnEmptyList) {
  EXPECT_EQ(collected("staff 1 at 0 instrument 101\nbarline 2 at 5\n"), "");
  EXPECT_EQ(collected(""), "");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Barlines, AnyPositionIsAccepted) {
  EXPECT_EQ(collected("barline 1 at 0x7FC00000\nbarline 1 at 0xFF800000\nbarline 1 at -0 kind 1\n"),
            "0x7FC00000/0 0xFF800000/0 -0/1");
}

// --- their order ---

TEST_F(Barlines, SortAscendsByPositionAndMovesTheKindAlong) {
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

/// Passes over adjacent pairs until one pass exchanges nothing.
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
  RandomGenerator random(55);
  for (int round = 0; round < 1000; ++round) {
    const std::size_t choice = std::size(positions) - (round % 2 == 0 ? 0 : 1);
    BarlineList barlines;
    for (std::uint32_t count = random.below(20); count > 0; --count) {
      barlines.push_back({positions[random.below(choice)], static_cast<std::int16_t>(barlines.size())});
    }
    BarlineList expected = barlines;
    sortByExchanges(expected);
    ASSERT_EQ(sorted(barlines), listed(expected)) << "of " << listed(barlines);
  }
}

}  // namespace
}  // namespace kiv::test
