#include "analysis/read_bar_data.h"

#include "tests/analysis/read_bar_data_fixture.h"

namespace kiv::test {
namespace {

TEST_F(ReadBarData, MissingFileIsANamingProblem) {
  end = endOf(host, [&] { reader.readBarData(name, 0, table, firstClefs); });
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages,
            std::vector{critical("File naming problem: C:\\M\\A1.MUS\r\nCurrent folder = C:\\KIV\r\n"
                                 "Filenames required for this program must have this format:\r\n\r\n"
                                 "    <letter(s)><digit(s)><optionally one sequence letter>.<suffix>\r\n\r\n"
                                 "Rename your input.")});
}

TEST_F(ReadBarData, BrokenFileIsReportedWithItsItemNumber) {
  std::string bytes = page("staff 1 at 0 size 1\nbarline 1 at 0 spans 1\n");
  bytes.resize(bytes.size() - 24 - 4);
  readBytes(bytes);
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Structural error in MUS file: C:\\M\\A1.MUS\r\n"
                                                "Try to recover with KivValid/KivRecover.\r\n"
                                                "Current folder = C:\\KIV\r\nItem number = 2")});
  EXPECT_EQ(host.shown.at(0).location, (Location{.file = name, .item = 2}));
}

TEST_F(ReadBarData, TextTooShortForItsCharactersIsBroken) {
  for (const char* type : {"11", "15", "16"}) {
    host.messages.clear();
    read("staff 1 at 0 size 1\nitem " + std::string(type) + " 1 5 0 0 0 0 0 0 0 0 0 0\n");
    EXPECT_EQ(end, 1) << type;
    ASSERT_EQ(host.messages.size(), 1U) << type;
    EXPECT_TRUE(host.messages[0].text.ends_with("\r\nItem number = 2")) << type;
  }
}

TEST_F(ReadBarData, FileWithoutAHeaderIsItemNumber0) {
  readBytes("\x01");
  EXPECT_EQ(end, 1);
  EXPECT_TRUE(host.messages.at(0).text.ends_with("\r\nItem number = 0"));
}

TEST_F(ReadBarData, TwoZeroBytesAreItemNumber1) {
  readBytes(std::string(2, '\0'));
  EXPECT_EQ(end, 1);
  EXPECT_TRUE(host.messages.at(0).text.ends_with("\r\nItem number = 1"));
}

TEST_F(ReadBarData, ItemWithTooManyParametersIsARunTimeError) {
  read("staff 1 at 0\nitem 6 1 0 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21\n");
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Subscript out of range\r\nC:\\M\\A1.MUS, item 2")});
}

TEST_F(ReadBarData, KeepsStavesBarlinesAndCuesOnly) {
  read(
      "staff 1 at 0 size 1 instrument 101\nclef 1 at 2 kind 1\nkeysignature 1 at 9 key 2\n"
      "timesignature 1 at 12 upper 4 lower 4\nnote 1 at 20 duration 1\nrest 1 at 30 kind -2 cue 104\n"
      "item 10 1 0 5\nbarline 1 at 50 spans 1\ntext 1 at 5 \"Adagio\"\n");
  EXPECT_EQ(items(),
            "staff 1 at 0 size 1 instrument 101 \"STAFF=1,FILE=C:\\M\\A1.MUS\"\n"
            "rest 1 at 30 kind -2 cue 104\n"
            "barline 1 at 50 spans 1\n");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ReadBarData, ItemsKeepTheirNumbersInTheFile) {
  read("note 1 at 5\nstaff 1 at 0\nnote 1 at 7\nnote 1 at 9\nbarline 1 at 0\n");
  EXPECT_EQ(table.location(1), (Location{.file = name, .item = 2}));
  EXPECT_EQ(table.location(2), (Location{.file = name, .item = 5}));
}

TEST_F(ReadBarData, StaffIdentifierBecomesNonNegative) {
  read("staff 1 at 0 instrument -101\n");
  EXPECT_EQ(table.itemPar(1, par::instrument), 101);
}

TEST_F(ReadBarData, HiddenStaffIsSkippedAndLetsTheInterfaceHandleEvents) {
  read("staff 1 at 0 lines -1 instrument 101\nclef 1 at 2 kind 1\nstaff 2 at 0 lines 5 instrument 102\n");
  EXPECT_EQ(items(), "staff 2 at 0 lines 5 instrument 102 \"STAFF=2,FILE=C:\\M\\A1.MUS\"\n");
  EXPECT_EQ(host.calls, std::vector<std::string>{"events"});
  EXPECT_EQ(firstClefs.firstClefCount(), 0U) << "its clef has no staff";
}

TEST_F(ReadBarData, OffsetRaisesStaffNumbersButNotTheTextOfTheStaff) {
  read("staff 3 at 0 instrument 7\nbarline 3 at 0 spans 1\nrest 3 at 9 kind -12 cue 8\n", 12);
  EXPECT_EQ(items(),
            "staff 15 at 0 instrument 7 \"STAFF=3,FILE=C:\\M\\A1.MUS\"\n"
            "barline 15 at 0 spans 1\nrest 15 at 9 kind -12 cue 8\n");
}

TEST_F(ReadBarData, StaffNumberInTheTextIsAGeneralNumber) {
  read("staff 2.5 at 0\nstaff 12 at 0\n");
  EXPECT_EQ(table.itemText(1), "STAFF=2.5,FILE=C:\\M\\A1.MUS");
  EXPECT_EQ(table.itemText(2), "STAFF=12,FILE=C:\\M\\A1.MUS");
}

TEST_F(ReadBarData, MarksOfTheFileAreClearedButTheSystemNumberStays) {
  read("staff 1 at 0 p18 7 p19 8 p20 9\nbarline 1 at 0 p18 7 p19 8 p20 9\n");
  EXPECT_EQ(table.itemPar(1, par::system), 7);
  EXPECT_EQ(table.itemPar(1, par::stavesUp), 0);
  EXPECT_EQ(table.itemPar(1, par::mark), 0);
  EXPECT_EQ(table.itemPar(2, par::stavesUp), 8);
  EXPECT_EQ(table.itemPar(2, par::mark), 0);
}

TEST_F(ReadBarData, AppendsToWhatTheTableHolds) {
  read("staff 1 at 0 instrument 1\n");
  read("staff 1 at 0 instrument 2\n", 1);
  EXPECT_EQ(table.itemCount(), 2);
  EXPECT_EQ(table.itemPar(2, par::staff), 2);
}

TEST_F(ReadBarData, StaffNumberBeyond16BitsIsARunTimeErrorAtItsItem) {
  for (const char* number : {"40000", "32767.5", "-32769", "1e9", "0x7F800000", "0x7FC00000"}) {
    host.messages.clear();
    host.shown.clear();
    table.clear();
    read("staff 1 at 0\nnote 1 at 5\nstaff " + std::string(number) + " at 0\nitem 99 1\n");
    EXPECT_EQ(end, 1) << number;
    EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\A1.MUS, item 3")}) << number;
    ASSERT_EQ(host.shown.size(), 1U) << number;
    EXPECT_EQ(host.shown[0].location, (Location{.file = name, .item = 3})) << number;
  }
}

TEST_F(ReadBarData, StaffNumberCountsWithTheOffsetAdded) {
  read("staff 32000 at 0\n", 767);
  EXPECT_EQ(end, std::nullopt);
  read("note 1 at 5\nstaff 32000 at 0\n", 768);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\A1.MUS, item 2")});
}

TEST_F(ReadBarData, StaffNumberThatRoundsInto16BitsIsKept) {
  read("staff 32767.25 at 0\nstaff -32768.5 at 0\n");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(table.itemCount(), 2);
}

TEST_F(ReadBarData, OnlyStavesThatAreKeptNeedA16BitNumber) {
  read("staff 40000 at 0 lines -1\nbarline 40000 at 0\nrest 40000 at 30 kind -2 cue 104\nclef 40000 at 2\n");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(table.itemCount(), 2);
}

TEST_F(ReadBarData, ItemsOfAlmostTheRightTypeAreDropped) {
  read("item 8.5 1 0\nitem 13.5 1 0\nitem 2.5 1 0 0 -2 0 0 0 0 0 0 0 5\n");
  EXPECT_EQ(table.itemCount(), 0);
}

TEST_F(ReadBarData, TooManyItemsEndTheProgram) {
  std::string text;
  for (int i = 0; i <= 5000; ++i) {
    text += "barline 1 at 0\n";
  }
  read(text);
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("MUS file too big for operation. Hit OK to terminate.")});
}

/// A cue marker, and how a change to one of its parameters decides.
class CueMarker : public ReadBarData {
 protected:
  bool isKept(const std::string& parameters) {
    table.clear();
    read("rest 1 at 30 " + parameters + "\n");
    return table.itemCount() == 1;
  }
};

TEST_F(CueMarker, KindIsMinus2OrMinus12) {
  EXPECT_TRUE(isKept("kind -2 cue 104"));
  EXPECT_TRUE(isKept("kind -12 cue 104"));
  EXPECT_FALSE(isKept("kind 2 cue 104"));
  EXPECT_FALSE(isKept("kind -2.5 cue 104"));
  EXPECT_FALSE(isKept("cue 104"));
}

TEST_F(CueMarker, FormMinus1IsNone) {
  EXPECT_FALSE(isKept("kind -2 form -1 cue 104"));
  EXPECT_TRUE(isKept("kind -2 form 1 cue 104"));
  EXPECT_TRUE(isKept("kind -2 form 0x7FC00000 cue 104"));
}

TEST_F(CueMarker, HeightIsBetweenMinus6And2) {
  EXPECT_TRUE(isKept("kind -2 height -6 cue 104"));
  EXPECT_TRUE(isKept("kind -2 height 2 cue 104"));
  EXPECT_FALSE(isKept("kind -2 height -6.01 cue 104"));
  EXPECT_FALSE(isKept("kind -2 height 2.01 cue 104"));
  EXPECT_FALSE(isKept("kind -2 height -100 cue 104"));
  EXPECT_FALSE(isKept("kind -2 height 0x7FC00000 cue 104"));
}

TEST_F(CueMarker, NeedsAnInstrument) {
  EXPECT_FALSE(isKept("kind -2"));
  EXPECT_FALSE(isKept("kind -2 cue -0"));
  EXPECT_TRUE(isKept("kind -2 cue -104"));
  EXPECT_TRUE(isKept("kind -2 cue 0x7FC00000"));
}

}  // namespace
}  // namespace kiv::test
