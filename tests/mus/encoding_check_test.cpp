#include "mus/encoding_check.h"

#include <gtest/gtest.h>

#include "mus/writer.h"
#include "tests/mus/write_file.h"

namespace kiv::test {
namespace {

/// The table, encoded and read back.
class EncodingCheck : public WriteFile {
 protected:
  std::optional<LostItem> lost() {
    encodePage("C:\\P.MUS", table_, buffer_);
    return findLostItem(buffer_, table_);
  }
  void expectRight(std::string_view pageText) {
    load(pageText);
    EXPECT_EQ(lost(), std::nullopt) << pageText;
  }
  std::optional<int> writeReadBack() {
    return endOf(host_, [&] { writeFile(host_, "C:\\P.MUS", table_, buffer_, ReadBack::yes); });
  }

  const Location third{.file = "C:\\TABLE.MUS", .item = 3};
};

TEST_F(EncodingCheck, FindsNothingWrongWithOrdinaryItems) {
  expectRight("staff 1 at 0 size 1 instrument 7\nnote 1 at 9 height 3 p20 5\nbarline 1 at 0 spans 1\n");
  expectRight("text 1 at 5 \"Adagio\"\nshorttext 1 at 5 \"12345\"\ncountedtext 1 at 5 \"dolce\"\n");
  expectRight("note 1 at 0x7FC00001 p5 -0\n");
}

TEST_F(EncodingCheck, WhatTheWriterSetsByItsRulesIsRight) {
  expectRight("staff 1 at 0 p4 3\n");
  table_.clear();
  add({11, 1}, "1234567");
  add({16, 1, 5, 0, 0, 0, 0, 0, 0, 0, 0, 99, 13}, "dolce");
  EXPECT_EQ(lost(), std::nullopt) << "a short text is cut, and the characters are counted anew";
}

TEST_F(EncodingCheck, ItemsOfOtherStavesAndDeletedOnesAreNotMissed) {
  load("note 1 at 5\nnote 40 at 5\nnote 0 at 5\nnote 1.5 at 5\nnote 2 at 5\n");
  table_.item(5).setType(ItemType::deleted);
  EXPECT_EQ(lost(), std::nullopt);
}

TEST_F(EncodingCheck, ACountedTextOfNoCharactersIsLost) {
  load("staff 2 at 0\nnote 1 at 5\ncountedtext 1 at 5 \"abcd\" characters 0\n");
  EXPECT_EQ(lost(), (LostItem{2, third})) << "item 2 of the page, as its staff comes first";
}

TEST_F(EncodingCheck, ATextOfBrokenChunksIsLost) {
  for (const float type : {11.0F, 15.0F}) {
    load("note 1 at 5\nnote 1 at 6\ntext 1 at 5 \"x\"\n");
    table_.itemPar(3, par::type) = type;
    table_.itemText(3) = "Allegro, ma non troppo ...!";
    EXPECT_EQ(lost(), (LostItem{3, third})) << type;
  }
}

TEST_F(EncodingCheck, AnItemThatNoFileHasIsNamedByItsNumberOnly) {
  table_.clear();
  add({16, 1}, "");
  EXPECT_EQ(lost(), (LostItem{1, {}}));
}

TEST_F(EncodingCheck, AnItemThatDiffersIsFound) {
  load("note 1 at 5 height 2\nnote 1 at 6\ntext 1 at 5 \"Adagio\"\n");
  encodePage("C:\\P.MUS", table_, buffer_);
  ItemTable other = table_;
  other.itemPar(1, par::height) = 3;
  EXPECT_EQ(findLostItem(buffer_, other), (LostItem{1, {.file = "C:\\TABLE.MUS", .item = 1}}));
  other = table_;
  other.itemText(3) = "Allegro";
  EXPECT_EQ(findLostItem(buffer_, other), (LostItem{3, third}));
}

TEST_F(EncodingCheck, ATextThatDiffersIsFoundBetweenOtherItems) {
  load("note 1 at 5\ntext 1 at 5 \"Adagio\"\nnote 1 at 6\n");
  encodePage("C:\\P.MUS", table_, buffer_);
  ItemTable other = table_;
  for (const char* text : {"Allegro", ""}) {
    other.itemText(2) = text;
    EXPECT_EQ(findLostItem(buffer_, other).value_or(LostItem{}).number, 2) << text;
  }
  other = table_;
  other.itemText(1) = "a note with a text";
  EXPECT_EQ(findLostItem(buffer_, other).value_or(LostItem{}).number, 1);
}

TEST_F(EncodingCheck, AParameterThatDiffersIsFoundInEveryItem) {
  const std::string note = "note 1 at 5 height 2 p9 1\n";
  load(note + note + note + note + note + note);
  encodePage("C:\\P.MUS", table_, buffer_);
  for (int i = 1; i <= table_.itemCount(); ++i) {
    for (const int p : {par::height, par::tuplet, par::tuplet + 1, parameterCount}) {
      ItemTable other = table_;
      other.itemPar(i, p) = 3;
      EXPECT_EQ(findLostItem(buffer_, other).value_or(LostItem{}).number, i) << "P" << p;
      other.itemPar(i, p) = 0;
      EXPECT_EQ(findLostItem(buffer_, other).has_value(), p <= par::tuplet) << "item " << i << ", P" << p;
    }
  }
}

TEST_F(EncodingCheck, TheSignOfAZeroIsNotMissedInAnyItem) {
  const std::string note = "note 1 at 5 height -0 p9 1 p12 -0\n";
  expectRight(note + note + note + note + note + note);
}

TEST_F(EncodingCheck, AnItemTooManyIsFound) {
  load("note 1 at 5\nnote 1 at 6\n");
  encodePage("C:\\P.MUS", table_, buffer_);
  load("note 1 at 5\n");
  EXPECT_EQ(findLostItem(buffer_, table_), (LostItem{2, {}}));
}

TEST_F(EncodingCheck, EveryCutOfAPageIsFound) {
  load("note 1 at 5\nstaff 1 at 9 instrument 3\ntext 1 at 5 \"Adagio\"\n");
  encodePage("C:\\P.MUS", table_, buffer_);
  for (std::size_t size = 0; size < buffer_.size(); ++size) {
    EXPECT_NE(findLostItem(std::string_view(buffer_).substr(0, size), table_), std::nullopt) << size;
  }
}

TEST_F(EncodingCheck, APageThatLosesAnItemIsNotWritten) {
  host_.addFile("C:\\P.MUS", "the old file");
  load("note 1 at 5\nnote 1 at 6\ncountedtext 1 at 5 \"abcd\" characters 0\n");
  EXPECT_EQ(writeReadBack(), 1);
  EXPECT_EQ(host_.messages, std::vector{critical("Output MUS file cannot be read back and is not written: C:\\P.MUS\r\n"
                                                 "Item number = 3\r\nIt comes from C:\\TABLE.MUS, item 3")});
  EXPECT_EQ(host_.shown.at(0).location, third);
  EXPECT_EQ(file(), "the old file");
}

TEST_F(EncodingCheck, APageThatIsRightIsWrittenAsEver) {
  load("staff 1 at 0\nnote 1 at 5\ntext 1 at 5 \"Adagio\"\n");
  EXPECT_EQ(writeReadBack(), std::nullopt);
  EXPECT_TRUE(file() == page("staff 1 at 0\nnote 1 at 5\ntext 1 at 5 \"Adagio\"\n"));
}

}  // namespace
}  // namespace kiv::test
