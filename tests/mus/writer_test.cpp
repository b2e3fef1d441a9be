#include "mus/writer.h"

#include <limits>

#include "tests/mus/page_bytes.h"
#include "tests/mus/write_file.h"

namespace kiv::test {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// --- bytes ---

TEST_F(WriteFile, OfASmallPage) {
  load(
      "staff 1 at 0 lines 5 instrument 3\n"
      "note 1 at 20.5 height 5\n"
      "shorttext 1 at 30 \"mf\"\n"
      "text 1 at 40 p13 4 \"Allegro\"\n"
      "countedtext 1 at 50 \"dolce\"\n");
  ASSERT_EQ(write(), std::nullopt);
  const std::string staff = words({9, 8, 1, 0, 0, 0, 0, 5, 0, 3});
  const std::string note = words({4, 1, 1, 20.5F, 5});
  const std::string shortText = words({15, 11, 1, 30}) + zeroWords(10) + "mf      ";
  const std::string text = words({19, 15, 1, 40}) + zeroWords(9) + words({4}) + "Allegro                 ";
  const std::string countedText = words({15, 16, 1, 50}) + zeroWords(8) + words({5, 0}) + "dolce   ";
  const std::string expected = header(73) + staff + note + shortText + text + countedText + trailer();
  EXPECT_EQ(hex(file()), hex(expected));
}

TEST_F(WriteFile, PutsTheLowByteOfTheWordCountFirst) {
  loadText(15, std::string(1000, 'x'));
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file().substr(0, 2)), "0E 01 ") << "14 words and 250 chunks of the text, and the trailer's 6";
  EXPECT_EQ(file().size(), 2U + 4U * 270U);
}

// --- which items, in which order ---

TEST_F(WriteFile, GroupsItemsByStaffAndKeepsTheTablesOrderWithinAStaff) {
  load(
      "note 32 at 1\n"
      "note 2 at 9\n"
      "note 1 at 9\n"
      "clef 2 at 3\n"
      "note 1 at 5\n"
      "staff 1 at 7\n"
      "note 2 at 9 height 4\n");
  expectWritten(
      "note 1 at 9\n"
      "note 1 at 5\n"
      "staff 1 at 7\n"
      "note 2 at 9\n"
      "clef 2 at 3\n"
      "note 2 at 9 height 4\n"
      "note 32 at 1\n");
}

TEST_F(WriteFile, WritesEveryStaffFromOneToThirtyTwo) {
  std::string upwards;
  std::string downwards;
  for (int staff = 1; staff <= 32; ++staff) {
    const std::string line = "note " + std::to_string(staff) + " at 10\n";
    upwards += line;
    downwards.insert(0, line);
  }
  load(downwards);
  expectWritten(upwards);
}

TEST_F(WriteFile, LeavesItemsOfOtherStavesOut) {
  load(
      "note 0 at 1\n"
      "note -0 at 2\n"
      "note 33 at 3\n"
      "note 1.5 at 4\n"
      "note 0.99999994 at 5\n"
      "note 32.000004 at 6\n"
      "note 17 at 7\n"
      "note -1 at 8\n"
      "note 3e9 at 9\n"
      "note 0x7FC00000 at 10\n"
      "note 0x7F800000 at 11\n"
      "note 0xFF800000 at 12\n"
      "staff 1.5 at 13\n"
      "text 33 at 14 \"text\"\n");
  expectWritten("note 17 at 7\n");
  EXPECT_EQ(table_.itemCount(), 14) << "the table keeps them";
}

TEST_F(WriteFile, LeavesAnItemWithoutAnyParameterOutForItHasNoStaff) {
  add(Item());
  add({4, 1, 9});
  add({}, "text");
  expectWritten("item 4 1 9\n");
}

TEST_F(WriteFile, LeavesDeletedItemsOut) {
  load("note 1 at 1\nbarline 1 at 2 spans 1\ntext 1 at 3 \"text\"\nnote 1 at 4\n");
  table_.itemPar(2, 1) = 999;
  table_.itemPar(3, 1) = 999;
  expectWritten("note 1 at 1\nnote 1 at 4\n");
}

TEST_F(WriteFile, OfDeletedItemsOnlyIsThePageWithoutItems) {
  load("note 1 at 1\nnote 2 at 2\n");
  table_.itemPar(1, 1) = 999;
  table_.itemPar(2, 1) = 999;
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file()), hex(header(6) + trailer()));
  EXPECT_EQ(readBack(), "");
}

TEST_F(WriteFile, OfItemsOfOtherStavesOnlyIsThePageWithoutItems) {
  load("note 33 at 1\n");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file()), hex(header(6) + trailer()));
}

TEST_F(WriteFile, WritesNoRowBeyondTheItems) {
  load("note 1 at 1\nnote 1 at 2\nnote 1 at 3\n");
  table_.clear();
  add({3, 1, 7});
  expectWritten("clef 1 at 7\n");
}

// --- items without text ---

TEST_F(WriteFile, EndsAnItemWithItsLastParameterThatIsNotZero) {
  add({4, 1});
  add({4, 1, 5});
  add({4, 1, 0, 0, 7, 0, 0});
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({2, 4, 1}) + words({3, 4, 1, 5}) + words({5, 4, 1, 0, 0, 7})));
  EXPECT_EQ(hex(file().substr(0, 2)), hex(header(3 + 4 + 6 + 6)));
}

TEST_F(WriteFile, GivesAnItemTwentyParametersAtMost) {
  Item item = itemOf({4, 1});
  item[20] = 2.5F;
  add(item);
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({20, 4, 1}) + zeroWords(17) + words({2.5F})));
}

TEST_F(WriteFile, TreatsAZeroOfEitherSignAtTheEndAsZero) {
  add({4, 1, -0.0F, 3, -0.0F, 0, -0.0F});
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({4, 4, 1, -0.0F, 3})));
}

TEST_F(WriteFile, WritesWhatIsNoNumberAsItIs) {
  add({4, 1, infinity, 0, -infinity, 0, notANumber});
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({7, 4, 1, infinity, 0, -infinity, 0, notANumber})));
}

TEST_F(WriteFile, DropsTheTextOfAnItemThatHasNone) {
  add({4, 1, 5}, "text");
  add({11.5F, 1, 5}, "text");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({3, 4, 1, 5}) + words({3, 11.5F, 1, 5})));
}

TEST_F(WriteFile, SetsP4OfStavesToZero) {
  load("staff 1 at 5 p4 7 lines 5\nstaff 2 at 5 p4 7\nstaff 2 at 0 p4 0x7FC00000\n");
  expectWritten("staff 1 at 5 lines 5\nstaff 2 at 5\nstaff 2 at 0\n");
  EXPECT_EQ(asText(table_), "staff 1 at 5 lines 5\nstaff 2 at 5\nstaff 2 at 0\n") << "in the table too";
}

TEST_F(WriteFile, LeavesP4OfOtherTypesAsItIs) {
  const std::string others = "barline 1 at 5 spans 7\nnote 1 at 5 height 7\nitem 7 1 5 7\nitem 8.5 1 5 7\n";
  load(others);
  expectWritten(others);
}

TEST_F(WriteFile, LeavesP4OfStavesThatAreNotWrittenAsItIs) {
  const std::string staves = "staff 33 at 5 p4 7\nstaff 0 at 5 p4 7\nstaff 1.5 at 5 p4 7\n";
  load(staves + "staff 1 at 5 p4 7\n");
  table_.itemPar(4, 1) = 999;
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(asText(table_), staves + "item 999 1 at 5 p4 7\n");
}

// --- the file in its place ---

TEST_F(WriteFile, ReplacesTheOldFile) {
  host_.addFile("C:\\P.MUS", page("note 1 at 1\nnote 1 at 2\nnote 1 at 3\n"));
  load("clef 1 at 7\n");
  expectWritten("clef 1 at 7\n");
}

TEST_F(WriteFile, OfAnEmptyTableLeavesTheOldFileAsItIs) {
  host_.addFile("C:\\P.MUS", "the old file");
  host_.unwritable = {"C:\\P.MUS"};
  EXPECT_EQ(write(), std::nullopt);
  EXPECT_EQ(file(), "the old file");
  EXPECT_EQ(host_.messages, std::vector<Message>{}) << "nothing is tried";
}

TEST_F(WriteFile, OfAnEmptyTableMakesNoFile) {
  EXPECT_EQ(write(), std::nullopt);
  EXPECT_FALSE(host_.hasFile("C:\\P.MUS"));
}

TEST_F(WriteFile, EndsTheProgramOverAFileThatCannotBeWrittenAndLeavesTheOldOne) {
  host_.addFile("C:\\P.MUS", "the old file");
  host_.unwritable = {"C:\\P.MUS"};
  load("note 1 at 1\n");
  EXPECT_EQ(write(), 1);
  EXPECT_EQ(host_.messages, std::vector<Message>{critical("Open of output MUS file failed. Hit OK to terminate.")});
  EXPECT_EQ(file(), "the old file");
  EXPECT_EQ(host_.calls, std::vector<std::string>{}) << "nothing was deleted first";
}

}  // namespace
}  // namespace kiv::test
