#include "conversion/set_time_signature.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "conversion/reference_staff.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

/// Systems in which instrument 102 has the rest staff.
class SetTimeSignature : public ::testing::Test {
 protected:
  void set(std::string_view system, std::int16_t instrument = 102) {
    items = tableOf(host, system);
    setOnTable(instrument);
  }
  void setOnTable(std::int16_t instrument = 102) {
    before = items.itemCount();
    end = endOf(host, [&] { setTimeSignature(items, instrument); });
  }
  /// What the procedure adds to a system.
  std::string added(std::string_view system, std::int16_t instrument = 102) {
    set(system, instrument);
    EXPECT_EQ(end, std::nullopt) << system;
    ItemTable table;
    for (int i = before + 1; i <= items.itemCount(); ++i) {
      table.store_item(items.item(i));
    }
    return asText(table);
  }
  void expectEnd(std::string_view system, const std::string& text) {
    host.messages.clear();
    set(system);
    EXPECT_EQ(end, 1) << system;
    EXPECT_EQ(host.messages, std::vector{critical(text)}) << system;
    EXPECT_EQ(items.itemCount(), before) << system;
  }

  FakeHost host;
  ItemTable items;
  int before = 0;
  std::optional<int> end;
};

TEST_F(SetTimeSignature, RestStaffGetsTheTimeSignaturesOfTheReferenceStaff) {
  set("staff 1 at 0 instrument 101\n"
      "timesignature 1 at 12 p4 2 upper 6 lower 8\n"
      "note 1 at 20\n"
      "timesignature 1 at 90.5 upper 99\n"
      "staff 2 at 0 instrument 102 p20 1\n"
      "clef 2 at 2\n");
  EXPECT_EQ(asText(items),
            "staff 1 at 0 instrument 101\n"
            "timesignature 1 at 12 p4 2 upper 6 lower 8\n"
            "note 1 at 20\n"
            "timesignature 1 at 90.5 upper 99\n"
            "staff 2 at 0 instrument 102 p20 1\n"
            "clef 2 at 2\n"
            "timesignature 2 at 12 p4 2 upper 6 lower 8\n"
            "timesignature 2 at 90.5 upper 99\n");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(SetTimeSignature, TheyComeInItemOrder) {
  EXPECT_EQ(added("timesignature 1 at 90 upper 3 lower 4\nstaff 2 at 0 instrument 102 p20 1\n"
                  "timesignature 1 at 12 upper 6 lower 8\nstaff 1 at 0 instrument 101\n"
                  "timesignature 1 at 12 upper 5 lower 8\n"),
            "timesignature 2 at 90 upper 3 lower 4\ntimesignature 2 at 12 upper 6 lower 8\n"
            "timesignature 2 at 12 upper 5 lower 8\n");
}

TEST_F(SetTimeSignature, OnlyPositionAndP4ToP6AreCopied) {
  EXPECT_EQ(added("staff 1 at 0 instrument 101\n"
                  "timesignature 1 at -3 p4 4.5 upper 0.5 lower -6 p7 7 p8 8 p9 9 p10 10 p13 13 p17 17 p18 18 p20 20\n"
                  "staff 2 at 0 instrument 102 p20 1\n"),
            "timesignature 2 at -3 p4 4.5 upper 0.5 lower -6\n");
}

TEST_F(SetTimeSignature, ValuesThatAreNoNumbersAreCopied) {
  EXPECT_EQ(added("staff 1 at 0 instrument 101\n"
                  "timesignature 1 at 0x7FC00000 p4 0x7FC00000 upper 0x7F800000 lower 0xFF800000\n"
                  "staff 2 at 0 instrument 102 p20 1\n"),
            "timesignature 2 at 0x7FC00000 p4 0x7FC00000 upper 0x7F800000 lower 0xFF800000\n");
}

TEST_F(SetTimeSignature, OtherStavesAndOtherItemsGiveNothing) {
  EXPECT_EQ(added("staff 1 at 0 instrument 101\n"
                  "timesignature 3 at 12 upper 3 lower 4\n"
                  "timesignature 1.0000001 at 12 upper 3 lower 4\n"
                  "timesignature -1 at 12 upper 3 lower 4\n"
                  "timesignature 2 at 12 upper 3 lower 4\n"
                  "keysignature 1 at 12 key 3 type 4\n"
                  "item 17.5 1 12 0 3 4\n"
                  "staff 3 at 0 instrument 103\n"
                  "staff 2 at 0 instrument 102 p20 1\n"),
            "");
}

TEST_F(SetTimeSignature, OnlyItemsThatExistedBeforeAreCopied) {
  // The rest staff bears the reference staff's number, so what is added would be found again.
  EXPECT_EQ(added("staff 1 at 0 instrument 101\nstaff 1 at 0 instrument 102 p20 1\n"
                  "timesignature 1 at 12 upper 3 lower 4\n"),
            "timesignature 1 at 12 upper 3 lower 4\n");
}

TEST_F(SetTimeSignature, RowsLeftBeyondTheTableNeitherCountNorShowThrough) {
  items = tableOf(host,
                  "staff 1 at 0 instrument 101\ntimesignature 1 at 12 upper 3 lower 4\n"
                  "staff 2 at 0 instrument 102 p20 1\ncountedtext 9 at 9 p4 9 p7 9 \"old\"\n"
                  "timesignature 1 at 30 upper 2 lower 4\n");
  const ItemTable old = items;
  items.clear();
  for (int i = 1; i <= 3; ++i) {
    items.store_item(old.item(i));
  }
  setOnTable();
  EXPECT_EQ(asText(items),
            "staff 1 at 0 instrument 101\ntimesignature 1 at 12 upper 3 lower 4\n"
            "staff 2 at 0 instrument 102 p20 1\ntimesignature 2 at 12 upper 3 lower 4\n");
}

TEST_F(SetTimeSignature, MarkOfTheRestStaffStays) {
  set("staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102 p20 1\n");
  EXPECT_EQ(items.itemPar(2, par::mark), 1);
}

TEST_F(SetTimeSignature, TableThatOverflowsEndsTheProgram) {
  items = tableOf(host,
                  "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102 p20 1\n"
                  "timesignature 1 at 12 upper 3 lower 4\ntimesignature 1 at 80 upper 4 lower 4\n");
  while (items.itemCount() < itemLimit - 1) {
    items.store_item(Item(ItemType::note, 1, 0));
  }
  setOnTable();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("MUS file too big for operation. Hit OK to terminate.")});
  EXPECT_EQ(items.itemCount(), itemLimit);
  EXPECT_EQ(items.type(itemLimit), ItemType::timeSignature);
}

// --- whose staves they are ---

TEST_F(SetTimeSignature, ReferenceStaffIsTheFirstUnmarkedOneInItemOrderWhateverItsNumber) {
  EXPECT_EQ(added("staff 1 at 0 instrument 104 p20 1\n"
                  "timesignature 1 at 12 upper 1\n"
                  "staff 3 at 0 instrument 103\n"
                  "timesignature 3 at 12 upper 3\n"
                  "staff 2 at 0 instrument 101\n"
                  "timesignature 2 at 12 upper 2\n"
                  "staff 4 at 0 instrument 102 p20 1\n"),
            "timesignature 4 at 12 upper 3\n");
}

TEST_F(SetTimeSignature, AnyMarkOtherThanZeroIsAMark) {
  EXPECT_EQ(added("staff 1 at 0 instrument 101 p20 -1\nstaff 2 at 0 instrument 101 p20 1e-45\n"
                  "staff 3 at 0 instrument 101 p20 0x7FC00000\nstaff 4 at 0 instrument 101 p20 -0\n"
                  "timesignature 1 at 1 upper 1\ntimesignature 2 at 1 upper 2\ntimesignature 3 at 1 upper 3\n"
                  "timesignature 4 at 1 upper 4\nstaff 5 at 0 instrument 102 p20 1\n"),
            "timesignature 5 at 1 upper 4\n");
}

TEST_F(SetTimeSignature, RestStaffThatIsNotMarkedMayBeItsOwnReference) {
  EXPECT_EQ(added("staff 2 at 0 instrument 102\ntimesignature 2 at 5 upper 3\nstaff 1 at 0 instrument 101\n"
                  "timesignature 1 at 5 upper 4\n"),
            "timesignature 2 at 5 upper 3\n");
}

TEST_F(SetTimeSignature, RestStaffIsTheFirstOfTheInstrument) {
  EXPECT_EQ(added("staff 1 at 0 instrument 101\ntimesignature 1 at 12 upper 3\nstaff 7 at 0 instrument 102 p20 1\n"
                  "staff 6 at 0 instrument 102 p20 1\n"),
            "timesignature 7 at 12 upper 3\n");
}

TEST_F(SetTimeSignature, InstrumentsAreComparedExactly) {
  const std::string system =
      "staff 1 at 0 instrument 101\ntimesignature 1 at 12 upper 3\nstaff 2 at 0 instrument 102.00001\n"
      "staff 3 at 0 instrument -102\nclef 4 at 0 p9 102\n";
  EXPECT_EQ(added(system + "staff 5 at 0 instrument 102\n"), "timesignature 5 at 12 upper 3\n");
  EXPECT_EQ(added(system, -102), "timesignature 3 at 12 upper 3\n");
}

TEST_F(SetTimeSignature, InstrumentZeroIsAnInstrument) {
  EXPECT_EQ(added("staff 1 at 0 instrument 101\ntimesignature 1 at 12 upper 3\nstaff 2 at 0 p20 1\n", 0),
            "timesignature 2 at 12 upper 3\n");
}

TEST_F(SetTimeSignature, OnlyItemsOfExactlyTheTypeAreStaves) {
  EXPECT_EQ(added("item 8.5 1 0 0 0 0 0 0 102\nitem 9 2 0 0 0 0 0 0 102\n"
                  "timesignature 1 at 5 upper 1\ntimesignature 2 at 5 upper 2\n"
                  "staff 3 at 0 instrument 101\ntimesignature 3 at 5 upper 3\nstaff 4 at 0 instrument 102 p20 1\n"),
            "timesignature 4 at 5 upper 3\n");
}

TEST_F(SetTimeSignature, StavesAreFoundAfterAllOtherItems) {
  EXPECT_EQ(added("timesignature 1 at 12 upper 3\nstaff 2 at 0 instrument 102 p20 1\nstaff 1 at 0 instrument 101\n"),
            "timesignature 2 at 12 upper 3\n");
}

// --- failures ---

TEST_F(SetTimeSignature, EndsTheProgramWithoutAStaffOfTheInstrument) {
  expectEnd("staff 1 at 0 instrument 101\ntimesignature 1 at 12 upper 3\n", "Logical error 1 in setTimeSignature");
  expectEnd("staff 1 at 0 instrument 101\nclef 1 at 2 p9 102\nstaff 2 at 0 instrument 0x7FC00000\n",
            "Logical error 1 in setTimeSignature");
}

TEST_F(SetTimeSignature, EndsTheProgramWithoutAReferenceStaff) {
  expectEnd("staff 1 at 0 instrument 101 p20 1\nstaff 2 at 0 instrument 102 p20 1\nclef 2 at 2\n",
            "Logical error 2 in setTimeSignature");
}

TEST_F(SetTimeSignature, MissingRestStaffIsReportedBeforeAMissingReferenceStaff) {
  expectEnd("", "Logical error 1 in setTimeSignature");
  expectEnd("staff 1 at 0 instrument 101 p20 1\n", "Logical error 1 in setTimeSignature");
}

TEST_F(SetTimeSignature, StaffPairHasBothNumbersAndTheRestStaffsItem) {
  items = tableOf(host,
                  "clef 1 at 2\nstaff 4.5 at 0 instrument 102 p20 1\nstaff -3 at 0 instrument 101\n"
                  "staff 2 at 0 instrument 102\nstaff 5 at 0 instrument 103\n");
  const StaffPair staves = findStaffPair(items, 102, "anything");
  EXPECT_EQ(staves.restStaffItem, 2);
  EXPECT_EQ(staves.rest, 4.5F);
  EXPECT_EQ(staves.reference, -3);
}

TEST_F(SetTimeSignature, RowsBeyondTheTableAreNoStaves) {
  items = tableOf(host, "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\n");
  items.clear();
  setOnTable();
  EXPECT_EQ(host.messages, std::vector{critical("Logical error 1 in setTimeSignature")});
}

}  // namespace
}  // namespace kiv::test
