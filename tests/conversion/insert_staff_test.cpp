#include "conversion/insert_staff.h"

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

/// A system into which the rest staff of an instrument is inserted. The order of the instruments is 101, 102, 103.
class InsertStaff : public ::testing::Test {
 protected:
  void SetUp() override {
    setInstrumentOrder({101, 102, 103}, order);
    for (int k = 1; k <= 3; ++k) {
      OrderEntry& entry = order.entry(k);
      entry.size = MarkedValue(1);
      entry.lines = 5;
      entry.timeUp = 4;
      entry.timeDn = 4;
    }
  }
  void firstClef(std::int16_t instr, float kind, float height) {
    firstClefs.places.emplace(instr, firstClefs.entries.size());
    firstClefs.entries.push_back({instr, MarkedValue(kind), height});
  }
  /// The whole system after the insertion, as page text.
  std::string insert(std::int16_t instr, std::string_view system) {
    items = tableOf(host, system);
    end = endOf(host, [&] { insertStaff(items, instr, order, firstClefs, barlines); });
    return asText(items);
  }
  /// Only what was appended.
  std::string inserted(std::int16_t instr, std::string_view system) {
    const std::string all = insert(instr, system);
    const std::string before = asText(tableOf(host, system));
    std::size_t lines = 0;
    for (const char c : before) {
      lines += c == '\n' ? 1U : 0U;
    }
    std::size_t at = 0;
    for (; lines > 0; --lines) {
      at = all.find('\n', at) + 1;
    }
    return all.substr(at);
  }
  void expectEnd(std::int16_t instr, std::string_view system, const std::string& text) {
    host.messages.clear();
    insert(instr, system);
    EXPECT_EQ(end, 1) << system;
    EXPECT_EQ(host.messages, std::vector{critical(text)}) << system;
  }

  FakeHost host;
  OrderTable order;
  FirstClefTable firstClefs;
  BarlineList barlines = {{0, 0}, {60, 0}, {100, 2}};
  ItemTable items;
  std::optional<int> end;

  const std::string outerStaves =
      "staff 2 at 0 instrument 101\nnote 2 at 20 duration 4\nnote 2 at 70 duration 4\n"
      "staff 1 at 3 p6 7 instrument 103\nnote 1 at 20 duration 4\n";
};

// --- where the staff goes ---

TEST_F(InsertStaff, GetsTheNumberOfTheNeighborWhichMovesUpWithAllAboveIt) {
  EXPECT_EQ(insert(102, outerStaves),
            "staff 3 at 0 instrument 101\nnote 3 at 20 duration 4\nnote 3 at 70 duration 4\n"
            "staff 1 at 3 p6 7 instrument 103\nnote 1 at 20 duration 4\n"
            "staff 2 at 3 size 1 p6 7 lines 5 instrument 102\n"
            "clef 2 at 5\n"
            "barline 2 at 60 spans 1\n"
            "barline 2 at 100 spans 1 kind 2\n"
            "rest 2 at 20 kind -2 duration 4 p9 -1\n"
            "rest 2 at 70 kind -2 duration 4 p9 -1\n");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(InsertStaff, TheNeighborMayBeTheLastItemOfAll) {
  const std::string after =
      insert(102, "staff 1 at 3 instrument 103\nnote 1 at 20 duration 4\nstaff 2 at 0 instrument 101\n");
  EXPECT_TRUE(after.starts_with(
      "staff 1 at 3 instrument 103\nnote 1 at 20 duration 4\nstaff 3 at 0 instrument 101\nstaff 2 at 0 "))
      << after;
}

TEST_F(InsertStaff, PositionAndP6AreThoseOfTheLastStaffItemOfAll) {
  EXPECT_EQ(
      inserted(103, "staff 1 at 3 p6 7 instrument 102\nnote 1 at 20\nnote 1 at 70\nstaff 2 at 9 p6 1 instrument 101\n")
          .substr(0, 52),
      "staff 1 at 9 size 1 p6 1 lines 5 instrument 103\nclef")
      << "of staff 2, which is no neighbor";
}

TEST_F(InsertStaff, TheFirstInstrumentOfTheOrderIsOnTopAtPositionZero) {
  EXPECT_EQ(insert(101, "staff 1 at 3 p6 7 instrument 102\nnote 1 at 20\nnote 1 at 70\nstaff 2 at 4 instrument 103\n"),
            "staff 1 at 3 p6 7 instrument 102\nnote 1 at 20\nnote 1 at 70\nstaff 2 at 4 instrument 103\n"
            "staff 3 at 0 size 1 lines 5 instrument 101\n"
            "clef 3 at 2\n"
            "barline 3 at 60 spans 1\n"
            "barline 3 at 100 spans 1 kind 2\n"
            "rest 3 at 20 kind -2 duration 4 p9 -1\n"
            "rest 3 at 70 kind -2 duration 4 p9 -1\n");
}

TEST_F(InsertStaff, OnceANumberIsFoundLaterStavesAreComparedWithIt) {
  // The neighbor 101 is staff 2; then the staff whose identifier is 2 takes its place.
  setInstrumentOrder({101, 102, 2}, order);
  EXPECT_EQ(inserted(102,
                     "staff 2 at 0 instrument 101\nnote 2 at 20\nnote 2 at 70\nstaff 3 at 0 instrument 2\n"
                     "staff 1 at 0 instrument 7\n")
                .substr(0, 8),
            "staff 3 ");
}

TEST_F(InsertStaff, AnEarlierStaffWithTheNumberAsIdentifierDoesNotCount) {
  setInstrumentOrder({101, 102, 2}, order);
  EXPECT_EQ(inserted(102,
                     "staff 3 at 0 instrument 2\nstaff 2 at 0 instrument 101\nnote 2 at 20\nnote 3 at 20\n"
                     "note 3 at 70\nstaff 1 at 0 instrument 7\n")
                .substr(0, 8),
            "staff 2 ");
}

TEST_F(InsertStaff, AnIdentifierWithoutAStaffStandsForTheNumberItself) {
  setInstrumentOrder({1, 102, 103}, order);
  EXPECT_EQ(insert(102, "staff 1 at 0 instrument 103\nnote 1 at 20\nnote 1 at 70\n").substr(0, 27),
            "staff 2 at 0 instrument 103");
}

TEST_F(InsertStaff, ItemsAboveTheHighestStaffStay) {
  EXPECT_EQ(insert(102, outerStaves + "note 5 at 1\nnote 2 at 99\n").find("note 5 at 1\nnote 3 at 99\n"),
            std::string("staff 3 at 0 instrument 101\nnote 3 at 20 duration 4\nnote 3 at 70 duration 4\n"
                        "staff 1 at 3 p6 7 instrument 103\nnote 1 at 20 duration 4\n")
                .size());
}

TEST_F(InsertStaff, WithoutAPositionItEndsTheProgram) {
  setInstrumentOrder({0, 102, 30}, order);
  expectEnd(102, "staff 1 at 0 instrument 103\n", "Logical error in insertStaff: 0/1");
  expectEnd(102, "note 1 at 0\n", "Logical error in insertStaff: 0/0");
  setInstrumentOrder({30, 102}, order);
  expectEnd(102, "staff 1 at 0 instrument 103\n", "Logical error in insertStaff: 30/1");
  expectEnd(30, "note 1 at 0\n", "Logical error in insertStaff: 0");
  setInstrumentOrder({-5, 102}, order);
  expectEnd(102, "note 1 at 0\n", "Logical error in insertStaff: -5/0");
}

TEST_F(InsertStaff, AnInstrumentThatIsNotInTheOrderIsARunTimeError) {
  expectEnd(7, outerStaves, "Run-time error: Subscript out of range\r\nC:\\TABLE.MUS");
}

// --- the span of the system barline ---

TEST_F(InsertStaff, SpansOfZeroOnStaff1BecomeOne) {
  const std::string system = outerStaves + "barline 1 at 0\nbarline 2 at 0\nbarline 1 at 60 spans 2\n";
  const std::string after = insert(102, system);
  EXPECT_NE(after.find("barline 1 at 0 spans 1\nbarline 3 at 0\nbarline 1 at 60 spans 2\n"), std::string::npos)
      << after;
}

TEST_F(InsertStaff, SpansOfTheFirstItemAndOfTheLastAreChecked) {
  EXPECT_TRUE(insert(102, "barline 1 at 0\n" + outerStaves).starts_with("barline 1 at 0 spans 1\n"));
  const std::string after = insert(102, outerStaves + "barline 1 at 60\n");
  EXPECT_NE(after.find("\nbarline 1 at 60 spans 1\n"), std::string::npos) << after;
}

TEST_F(InsertStaff, ASpanBeyond16BitsIsAnOverflow) {
  expectEnd(102, outerStaves + "barline 1 at 0 spans 40000\n", "Run-time error: Overflow\r\nC:\\TABLE.MUS, item 6");
  EXPECT_EQ(inserted(102, outerStaves + "barline 2 at 0 spans 40000\n").substr(0, 8), "staff 2 ") << "not on staff 1";
}

// --- what it gets ---

TEST_F(InsertStaff, StaffCopiesWhatTheOrderKnows) {
  order.entry(2).size = MarkedValue(0);
  order.entry(2).lines = 1;
  order.entry(2).par11 = 6;
  EXPECT_EQ(inserted(102, outerStaves).substr(0, 59), "staff 2 at 3 p6 7 lines 1 instrument 102 p11 6\nclef 2 at 5\n");
}

TEST_F(InsertStaff, StaffIsMarkedAsFilledAtTheEnd) {
  insert(102, outerStaves);
  EXPECT_EQ(items.itemPar(6, par::mark), 0);
  barlines = {{0, 0}, {5000, 0}, {6000, 0}};
  insert(102, outerStaves);
  EXPECT_EQ(end, 1) << "no beat in a bar";
  EXPECT_EQ(items.itemPar(6, par::mark), 1) << "while it is being filled";
}

TEST_F(InsertStaff, ClefIsTheFirstOfTheInstrument) {
  firstClef(102, 4, -3);
  EXPECT_NE(inserted(102, outerStaves).find("clef 2 at 5 height -3 kind 4\n"), std::string::npos);
}

TEST_F(InsertStaff, ClefOfKindZeroIsAClef) {
  firstClef(102, 0, 6);
  EXPECT_NE(inserted(102, outerStaves).find("clef 2 at 5 height 6\n"), std::string::npos);
}

TEST_F(InsertStaff, AnInstrumentWithoutAClefGetsOneOfZeros) {
  firstClef(101, 4, -3);
  EXPECT_NE(inserted(102, outerStaves).find("clef 2 at 5\n"), std::string::npos);
}

TEST_F(InsertStaff, KeySignatureComesAfterTheClef) {
  order.entry(2).key = -3;
  order.entry(2).keyType = 2;
  EXPECT_NE(inserted(102, outerStaves).find("clef 2 at 5\nkeysignature 2 at 12 key -3 type 2\nbarline 2 at 60"),
            std::string::npos);
}

TEST_F(InsertStaff, AKeyOfZeroGivesNoKeySignature) {
  order.entry(2).keyType = 2;
  EXPECT_EQ(inserted(102, outerStaves).find("keysignature"), std::string::npos);
}

TEST_F(InsertStaff, BarlinesAreTheModelFromTheSecondOn) {
  barlines = {{0, 0}};
  EXPECT_EQ(inserted(102, outerStaves), "staff 2 at 3 size 1 p6 7 lines 5 instrument 102\nclef 2 at 5\n");
  barlines = {};
  EXPECT_EQ(inserted(102, outerStaves), "staff 2 at 3 size 1 p6 7 lines 5 instrument 102\nclef 2 at 5\n");
}

TEST_F(InsertStaff, BarlinesOnOneLineHaveTheirCodeAndSize) {
  order.entry(2).lines = 1;
  EXPECT_NE(inserted(102, outerStaves).find("barline 2 at 60 spans 1 p10 5 p11 1\n"), std::string::npos);
  order.entry(2).lines = 3;
  EXPECT_NE(inserted(102, outerStaves).find("barline 2 at 60 spans 1 p11 7\n"), std::string::npos);
}

TEST_F(InsertStaff, TimeSignaturesComeBeforeTheRests) {
  EXPECT_NE(inserted(102,
                     "staff 2 at 0 instrument 101\ntimesignature 2 at 9 upper 3 lower 4\nnote 2 at 20\n"
                     "note 2 at 70\nstaff 1 at 0 instrument 103\n")
                .find("barline 2 at 100 spans 1 kind 2\ntimesignature 2 at 9 upper 3 lower 4\n"
                      "rest 2 at 20 kind -2 duration 3 p9 -1\nrest 2 at 70 kind -2 duration 3 p9 -1\n"),
            std::string::npos);
}

TEST_F(InsertStaff, AFullTableEndsTheProgram) {
  std::string system = outerStaves;
  for (int i = 5; i < 4999; ++i) {
    system += "note 1 at 5\n";
  }
  expectEnd(102, system, "MUS file too big for operation. Hit OK to terminate.");
  EXPECT_EQ(items.itemCount(), 5000);
}

}  // namespace
}  // namespace kiv::test
