#include "conversion/read_staff.h"

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string file = "C:\\M\\X1.MUS";

/// Staves read from page files into a table that starts empty.
class ReadStaff : public ::testing::Test {
 protected:
  void read(std::int16_t staff, std::int16_t newStaff, const std::string& name = file) {
    end = endOf(host, [&] {
      items.beginFile(name);
      readStaff(staff, newStaff, pages, items);
    });
  }
  std::string text() const { return asText(items); }

  FakeHost host;
  ItemTable items;
  PageCache pages{host};
  std::optional<int> end;
  const std::string twoStaves =
      "staff 2 at 0 instrument 101\nnote 2 at 20 height 5\nstaff 1 at 0 instrument 102\n"
      "countedtext 1 at 30 \"dolce \"\nnote 2 at 40\nnote 1 at 40\nitem 12 2 50 1 2 3\n";
};

TEST_F(ReadStaff, AppendsTheItemsOfOneStaffInTheirOrderUnderTheirNewNumber) {
  host.addFile(file, page(twoStaves));
  read(2, 7);
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(text(),
            "staff 7 at 0 instrument 101\nnote 7 at 20 height 5\nnote 7 at 40\nitem 12 7 at 50 p4 1 p5 2 p6 3\n");
  read(1, -3);
  EXPECT_TRUE(
      text().ends_with("staff -3 at 0 instrument 102\ncountedtext -3 at 30 characters 6 \"dolce \"\nnote -3 at 40\n"))
      << text();
}

TEST_F(ReadStaff, AStaffMayBeReadTwice) {
  host.addFile(file, page("note 1 at 5\n"));
  read(1, 1);
  read(1, 2);
  EXPECT_EQ(text(), "note 1 at 5\nnote 2 at 5\n");
}

TEST_F(ReadStaff, AStaffThatIsNotThereGivesNothing) {
  host.addFile(file, page(twoStaves));
  read(3, 1);
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(text(), "");
}

TEST_F(ReadStaff, OnlyTheExactNumberIsTheStaff) {
  host.addFile(file, page("note 1.5 at 1\nnote 2 at 2\nnote 2.0000002 at 3\nnote -0 at 4\nnote 70000 at 5\n"
                          "note 0x7FC00000 at 6\nnote 0 at 7\n"));
  read(2, 1);
  read(0, 2);
  EXPECT_EQ(text(), "note 1 at 2\nnote 2 at 4\nnote 2 at 7\n");
}

TEST_F(ReadStaff, ParametersUpToTheTwentiethAreKept) {
  host.addFile(file, page("item 8 1 0 0 0 0 0 0 101 0 0 0 0 0 0 0 0 18 19 20\n"));
  read(1, 1);
  EXPECT_EQ(text(), "staff 1 at 0 instrument 101 p18 18 p19 19 p20 20\n");
}

TEST_F(ReadStaff, ItemsAreLocatedByTheirNumbersInTheirFiles) {
  host.addFile(file, page(twoStaves));
  host.addFile("C:\\M\\OTHER.MUS", page("note 2 at 5\nnote 1 at 8\n"));
  read(1, 1);
  read(1, 2, "C:\\M\\OTHER.MUS");
  ASSERT_EQ(items.itemCount(), 4);
  EXPECT_EQ(items.location(1), (Location{.file = file, .item = 3}));
  EXPECT_EQ(items.location(3), (Location{.file = file, .item = 6}));
  EXPECT_EQ(items.location(4), (Location{.file = "C:\\M\\OTHER.MUS", .item = 2}));
}

TEST_F(ReadStaff, AFileIsOpenedOnceForAllItsStaves) {
  host.addFile(file, page(twoStaves));
  read(1, 1);
  read(2, 2);
  read(1, 3);
  EXPECT_EQ(host.timesRead(file), 1);
  pages.drop(file);
  read(1, 4);
  EXPECT_EQ(host.timesRead(file), 2);
}

TEST_F(ReadStaff, WhatIsDroppedIsReadAgain) {
  host.addFile(file, page("note 1 at 5\n"));
  host.addFile("C:\\M\\OTHER.MUS", page("note 1 at 8\n"));
  read(1, 1);
  read(1, 1, "C:\\M\\OTHER.MUS");
  host.addFile(file, page("note 1 at 6\n"));
  pages.clear();
  read(1, 2);
  read(1, 2, "C:\\M\\OTHER.MUS");
  EXPECT_EQ(text(), "note 1 at 5\nnote 1 at 8\nnote 2 at 6\nnote 2 at 8\n");
  EXPECT_EQ(host.timesRead("C:\\M\\OTHER.MUS"), 2);
}

// --- broken files ---

TEST_F(ReadStaff, NothingOfADroppedFileIsFoundInTheNextOne) {
  const std::string other = "C:\\M\\X2.MUS";
  host.addFile(other, page("note 1 at 5\n"));
  for (const bool all : {false, true}) {
    host.addFile(file, page(twoStaves));
    read(1, 1);
    if (all) {
      pages.clear();
    } else {
      pages.drop(file);
    }
    items.clear();
    read(2, 1, other);
    EXPECT_EQ(text(), "") << "staff 2 was of the file before";
    read(1, 1, other);
    EXPECT_EQ(text(), "note 1 at 5\n");
    pages.clear();
    host.deleteFile(file);
    items.clear();
    read(1, 1);
    EXPECT_EQ(end, 1) << "nor is a deleted file found";
    EXPECT_EQ(text(), "");
  }
}

TEST_F(ReadStaff, AStructuralErrorEndsTheProgramAfterTheItemsBeforeIt) {
  host.addFile(file, page("note 1 at 5\nnote 2 at 6\nitem 99 1\n"));
  for (const std::int16_t staff : std::vector<std::int16_t>{1, 2, 3}) {
    host.messages.clear();
    read(staff, staff);
    EXPECT_EQ(end, 1);
    EXPECT_EQ(host.messages, std::vector{critical("Structural error in MUS file: C:\\M\\X1.MUS\r\n"
                                                  "Try to recover with KivValid/KivRecover.\r\n"
                                                  "Current folder = C:\\KIV\r\nItem number = 3")})
        << staff;
  }
  EXPECT_EQ(text(), "note 1 at 5\nnote 2 at 6\n");
}

TEST_F(ReadStaff, AFileThatIsNotThereHasItemNumberZero) {
  read(1, 1);
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Structural error in MUS file: C:\\M\\X1.MUS\r\n"
                                                "Try to recover with KivValid/KivRecover.\r\n"
                                                "Current folder = C:\\KIV\r\nItem number = 0")});
}

TEST_F(ReadStaff, AnItemOfTooManyParametersIsARunTimeErrorWhateverItsStaff) {
  std::string parameters;
  for (int p = 2; p <= 21; ++p) {
    parameters += " " + std::to_string(p);
  }
  host.addFile(file, page("note 1 at 5\nitem 5" + parameters + "\nnote 1 at 9\n"));
  read(1, 1);
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Subscript out of range\r\nC:\\M\\X1.MUS, item 2")});
  EXPECT_EQ(text(), "note 1 at 5\n");
}

TEST_F(ReadStaff, TheTableIsFullBeforeTheFileBreaks) {
  std::string notes;
  for (int i = 0; i < 5001; ++i) {
    notes += "note 1 at 5\n";
  }
  host.addFile(file, page(notes + "item 99 1\n"));
  read(1, 1);
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("MUS file too big for operation. Hit OK to terminate.")});
}

TEST_F(ReadStaff, OnlyWhatIsStoredCountsForTheTable) {
  std::string notes;
  for (int i = 0; i < 6000; ++i) {
    notes += "note 2 at 5\n";
  }
  host.addFile(file, page(notes + "note 1 at 7\n"));
  read(1, 1);
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(text(), "note 1 at 7\n");
}

}  // namespace
}  // namespace kiv::test
