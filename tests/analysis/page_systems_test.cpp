#include "analysis/page_systems.h"

#include <gtest/gtest.h>

#include "analysis/table_rows.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

class PageSystemsTest : public ::testing::Test {
 protected:
  void addPage(const std::string& file, std::string_view text) { host.addFile("C:\\M\\" + file, page(text)); }
  void read(const PageEntry& entry) {
    end = endOf(host, [&] { topFile = pages.read(entry, "C:\\M\\", table, firstClefs); });
  }
  void number() {
    end = endOf(host, [&] { systems = numberSystems(table, TableRows(table).staves, systemBase); });
  }
  /// "staff/system/staves up" for every staff, from the top of the table.
  std::string layout() const {
    std::string text;
    for (int i = 1; i <= table.itemCount(); ++i) {
      if (table.type(i) == ItemType::staff) {
        text += std::to_string(static_cast<int>(table.itemPar(i, par::staff))) + "/" +
                std::to_string(static_cast<int>(table.itemPar(i, par::system))) + "/" +
                std::to_string(static_cast<int>(table.itemPar(i, par::stavesUp))) + " ";
      }
    }
    return text;
  }

  FakeHost host;
  ItemTable table;
  FirstClefTable firstClefs;
  PageReader pages{host, host, host};
  std::string topFile;
  std::int16_t systemBase = 0;
  PageSystems systems;
  std::optional<int> end;

  const PageEntry onePage{"X1.MUS", "", "C:\\M\\"};
  const PageEntry twoFiles{"X1.MUS", "AB", "C:\\M\\"};
};

TEST_F(PageSystemsTest, SingleFileIsInTheResultFolder) {
  addPage("X1.MUS", "staff 1 at 0\nstaff 2 at 0\nbarline 1 at 0 spans 2\n");
  read(onePage);
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(topFile, "C:\\M\\X1.MUS");
  EXPECT_EQ(layout(), "2/0/0 1/0/2 ");
}

TEST_F(PageSystemsTest, PageNameWithAFolderIsUsedAsItIs) {
  host.addFile("D:\\N\\X1AB.MUS", page("staff 1 at 0\n"));
  read({"D:\\N\\X1AB.MUS", "", "D:\\N\\"});
  EXPECT_EQ(topFile, "D:\\N\\X1AB.MUS");
  EXPECT_EQ(table.itemCount(), 1);
}

TEST_F(PageSystemsTest, TableIsClearedForEveryPage) {
  addPage("X1.MUS", "staff 1 at 0\nbarline 1 at 0\n");
  read(onePage);
  read(onePage);
  EXPECT_EQ(table.itemCount(), 2);
}

TEST_F(PageSystemsTest, FilesAreReadFromTheLastLetterAndStacked) {
  addPage("X1A.MUS", "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  addPage("X1B.MUS", "staff 1 at 0 instrument 103\nstaff 2 at 0 instrument 102\nbarline 1 at 0 spans 2\n");
  read(twoFiles);
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(topFile, "C:\\M\\X1A.MUS");
  EXPECT_EQ(asText(table),
            "staff 3 at 0 instrument 101 \"STAFF=1,FILE=C:\\M\\X1A.MUS\"\n"
            "barline 3 at 0 p20 1\n"
            "staff 2 at 0 instrument 102 \"STAFF=2,FILE=C:\\M\\X1B.MUS\"\n"
            "staff 1 at 0 instrument 103 p19 3 p20 1 \"STAFF=1,FILE=C:\\M\\X1B.MUS\"\n"
            "barline 1 at 0 spans 2 p20 1\n");
}

TEST_F(PageSystemsTest, LettersInAnotherOrderStackInThatOrder) {
  addPage("X1A.MUS", "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  addPage("X1B.MUS", "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n");
  read({"X1.MUS", "BA", "C:\\M\\"});
  EXPECT_EQ(topFile, "C:\\M\\X1B.MUS");
  EXPECT_EQ(table.itemPar(1, par::instrument), 102) << "file B is on top";
}

TEST_F(PageSystemsTest, OffsetIsTheHighestStaffSoFarAndNeverFalls) {
  addPage("X1A.MUS", "staff 1 at 0 instrument 3\n");
  addPage("X1B.MUS", "barline 9 at 0\n");
  addPage("X1C.MUS", "staff 1 at 0 instrument 1\nstaff 4 at 0 instrument 2\nbarline 1 at 0\nstaff -7 at 0\n");
  read({"X1.MUS", "ABC", "C:\\M\\"});
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(layout(), "5/0/0 4/0/0 1/0/5 -7/0/0 ");
}

TEST_F(PageSystemsTest, MissingFileOfAPageEndsTheProgram) {
  addPage("X1B.MUS", "staff 1 at 0\nbarline 1 at 0\n");
  read(twoFiles);
  EXPECT_EQ(end, 1);
  EXPECT_TRUE(host.messages.at(0).text.starts_with("File naming problem: C:\\M\\X1A.MUS\r\n"));
}

TEST_F(PageSystemsTest, MultifilePageNeedsALeftBarlineOnItsLowestStaff) {
  addPage("X1A.MUS", "staff 1 at 0\nbarline 1 at 0 spans 1\n");
  addPage("X1B.MUS", "staff 1 at 0\nbarline 1 at 5 spans 1\n");
  read(twoFiles);
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages,
            std::vector{critical("No system barline encountered in multifile page. Top file is: C:\\M\\X1A.MUS")});
}

TEST_F(PageSystemsTest, AnyOfTheLeftBarlinesOfTheLowestStaffHoldsAMultifilePageTogether) {
  addPage("X1A.MUS", "staff 1 at 0\n");
  addPage("X1B.MUS", "staff 1 at 0\nbarline 1 at 0 spans 1\nbarline 1 at 1 spans 1\n");
  read(twoFiles);
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(layout(), "2/0/0 1/0/2 ");
}

TEST_F(PageSystemsTest, OffsetBeyond16BitsIsARunTimeError) {
  addPage("X1A.MUS", "staff 1 at 0\n");
  addPage("X1B.MUS", "staff 1 at 0\nstaff 40000 at 0\n");
  read(twoFiles);
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\X1B.MUS, item 2")});
}

TEST_F(PageSystemsTest, StaffThatDoesNotFitIsNamedByItsNumberInItsOwnFile) {
  addPage("X1A.MUS", "staff 1 at 0\n");
  addPage("X1B.MUS", "note 1 at 5\nstaff 1 at 0\nnote 1 at 7\nstaff 40000 at 0\n");
  read(twoFiles);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\X1B.MUS, item 4")});
  EXPECT_EQ(host.shown.at(0).location, (Location{.file = "C:\\M\\X1B.MUS", .item = 4}));
}

TEST_F(PageSystemsTest, StaffOfTheUpperFileThatDoesNotFitIsNamedByItsNumberThere) {
  addPage("X1A.MUS", "note 1 at 5\nstaff 32000 at 0\n");
  addPage("X1B.MUS", "staff 1 at 0\nstaff 1000 at 0\nbarline 1 at 0 spans 1\n");
  read(twoFiles);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\X1A.MUS, item 2")});
}

TEST_F(PageSystemsTest, BarlineThatDoesNotFitIsNamedByItsNumberAlthoughTheTableIsSorted) {
  addPage("X1.MUS", "staff 1 at 0\nnote 1 at 5\nbarline 1 at 9 spans 40000\nstaff 2 at 0\nstaff 3 at 0\n");
  read(onePage);
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 3")});
  EXPECT_EQ(host.shown.at(0).location, (Location{.file = "C:\\M\\X1.MUS", .item = 3}));
}

TEST_F(PageSystemsTest, BarlineOfTheLowerFileThatDoesNotFitIsNamedWithThatFile) {
  addPage("X1A.MUS", "staff 1 at 0\nbarline 1 at 0 spans 1\n");
  addPage("X1B.MUS", "note 1 at 5\nstaff 1 at 0\nbarline 1 at 0 spans 40000\n");
  read(twoFiles);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\X1B.MUS, item 3")});
}

TEST_F(PageSystemsTest, SystemNumberThatDoesNotFitIsNamedWithTheFileThatHasIt) {
  addPage("X1A.MUS", "staff 1 at 0\nbarline 1 at 0 spans 1\n");
  addPage("X1B.MUS", "staff 1 at 0\nbarline 1 at 0 spans 1\nstaff 0 at 0 p18 1e9\n");
  read(twoFiles);
  number();
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\X1B.MUS, item 3")});
}

TEST_F(PageSystemsTest, TopSystemOfThePageHasTheLowestNumber) {
  addPage("X1.MUS",
          "staff 1 at 0\nstaff 2 at 0\nstaff 3 at 0\nstaff 4 at 0\nstaff 5 at 0\n"
          "barline 1 at 0 spans 2\nbarline 3 at 0 spans 2\n");
  read(onePage);
  number();
  EXPECT_EQ(layout(), "5/1/1 4/2/0 3/2/2 2/3/0 1/3/2 ");
  EXPECT_EQ(systems.first, 1);
  EXPECT_EQ(systems.last, 3);
  EXPECT_EQ(systemBase, 3);
}

TEST_F(PageSystemsTest, NumbersRunOnFromPageToPage) {
  addPage("X1.MUS", "staff 1 at 0\nstaff 2 at 0\n");
  systemBase = 7;
  read(onePage);
  number();
  EXPECT_EQ(layout(), "2/8/1 1/9/1 ");
  EXPECT_EQ(systemBase, 9);
}

TEST_F(PageSystemsTest, PageWithoutStavesHasNoSystem) {
  addPage("X1.MUS", "barline 1 at 0\n");
  systemBase = 4;
  read(onePage);
  number();
  EXPECT_EQ(systems.first, 5);
  EXPECT_EQ(systems.last, 4);
  EXPECT_EQ(systemBase, 4);
}

TEST_F(PageSystemsTest, StaffBelowTheFirstBottomStaffCountsWithTheNumberOfItsFile) {
  addPage("X1.MUS", "staff 0 at 0 p18 3\nstaff 1 at 0\n");
  read(onePage);
  number();
  EXPECT_EQ(layout(), "1/3/1 0/1/0 ") << "the highest number, 3, is the file's";
  EXPECT_EQ(systemBase, 3);
}

TEST_F(PageSystemsTest, StaffWithoutANumberOfItsFileComesAfterTheSystems) {
  addPage("X1.MUS", "staff 0.5 at 0\nstaff 1 at 0\n");
  read(onePage);
  number();
  EXPECT_EQ(layout(), "1/1/1 0/2/0 ");
  EXPECT_EQ(systemBase, 1);
}

TEST_F(PageSystemsTest, HighestNumberIsRoundedWhenItIsTaken) {
  addPage("X1.MUS", "staff 0 at 0 p18 2.5\nstaff 1 at 0\n");
  read(onePage);
  number();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(systemBase, 2) << "halves to even";
  EXPECT_EQ(table.itemPar(1, par::system), 2);
  EXPECT_EQ(table.itemPar(2, par::system), 0.5);
}

TEST_F(PageSystemsTest, MoreSystemsThan16BitsCountIsARunTimeError) {
  addPage("X1.MUS", "staff 1 at 0\nstaff 2 at 0\n");
  systemBase = 32766;
  read(onePage);
  number();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\X1.MUS")});
}

TEST_F(PageSystemsTest, SystemNumberOfTheFileBeyond16BitsIsARunTimeError) {
  addPage("X1.MUS", "staff 0 at 0 p18 1e9\nstaff 1 at 0\n");
  read(onePage);
  number();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 1")});
}

}  // namespace
}  // namespace kiv::test
