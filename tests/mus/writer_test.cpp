#include "mus/writer.h"

#include <iterator>
#include <limits>
#include <optional>

#include <gtest/gtest.h>

#include "mus/reader.h"
#include "pagetext/page_text.h"
#include "tests/mus/page_bytes.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv {
namespace {

using test::asText;
using test::critical;
using test::Dice;
using test::endOf;
using test::FakeHost;
using test::header;
using test::hex;
using test::Message;
using test::page;
using test::tableOf;
using test::trailer;
using test::words;
using test::zeroWords;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

const std::string brokenPage = "Structural error in MUS file. Try to recover with KivValid/KivRecover.";
const std::string overflow = "Run-time error: Overflow\r\nC:\\P.MUS";

class WriteFile : public testing::Test {
 protected:
  void take(std::string_view pageText) { table_ = tableOf(host_, pageText); }

  void add(const Item& item) { table_.store_item(host_, item); }
  /// One text item of staff 1 at 0 and nothing else.
  void takeText(float type, const std::string& text) {
    table_.restart();
    add({{0, type, 1}, text});
  }

  /// Writes the table as P.MUS. Returns the exit code of a program that ended over it.
  std::optional<int> write() {
    return endOf([&] { writeFile(host_, "C:\\P.MUS", table_); });
  }
  std::string file() const { return host_.file("C:\\P.MUS"); }
  /// The file written, without header and trailer.
  std::string items() const { return file().substr(2, file().size() - 26); }

  /// What is written is the page of the text, byte for byte.
  void expectWritten(std::string_view pageText) {
    ASSERT_EQ(write(), std::nullopt);
    EXPECT_EQ(dumpPage(file()), dumpPage(page(pageText)));
    EXPECT_TRUE(file() == page(pageText));
    EXPECT_EQ(host_.messages, std::vector<Message>{});
  }

  /// The file written, loaded again.
  std::string readBack() {
    ItemTable table;
    EXPECT_EQ(endOf([&] { readFile(host_, "C:\\P.MUS", table); }), std::nullopt);
    return asText(table);
  }
  void expectBrokenPage() {
    ItemTable table;
    EXPECT_EQ(endOf([&] { readFile(host_, "C:\\P.MUS", table); }), 1);
    EXPECT_EQ(host_.messages, std::vector<Message>{critical(brokenPage)});
  }

  FakeHost host_;
  ItemTable table_;
};

// --- bytes ---

TEST_F(WriteFile, OfASmallPage) {
  take(
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
  takeText(15, std::string(1000, 'x'));
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file().substr(0, 2)), "0E 01 ") << "14 words and 250 chunks of the text, and the trailer's 6";
  EXPECT_EQ(file().size(), 2U + 4U * 270U);
}

// --- which items, in which order ---

TEST_F(WriteFile, GroupsItemsByStaffAndKeepsTheTablesOrderWithinAStaff) {
  take(
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
  take(downwards);
  expectWritten(upwards);
}

TEST_F(WriteFile, LeavesItemsOfOtherStavesOut) {
  take(
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
  add({{0, 4, 1, 9}, ""});
  add({{}, "text"});
  expectWritten("item 4 1 9\n");
}

TEST_F(WriteFile, LeavesDeletedItemsOut) {
  take("note 1 at 1\nbarline 1 at 2 spans 1\ntext 1 at 3 \"text\"\nnote 1 at 4\n");
  table_.itemPar(2, 1) = 999;
  table_.itemPar(3, 1) = 999;
  expectWritten("note 1 at 1\nnote 1 at 4\n");
}

TEST_F(WriteFile, OfDeletedItemsOnlyIsThePageWithoutItems) {
  take("note 1 at 1\nnote 2 at 2\n");
  table_.itemPar(1, 1) = 999;
  table_.itemPar(2, 1) = 999;
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file()), hex(header(6) + trailer()));
  EXPECT_EQ(readBack(), "");
}

TEST_F(WriteFile, OfItemsOfOtherStavesOnlyIsThePageWithoutItems) {
  take("note 33 at 1\n");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file()), hex(header(6) + trailer()));
}

TEST_F(WriteFile, TakesNoRowBeyondTheItems) {
  take("note 1 at 1\nnote 1 at 2\nnote 1 at 3\n");
  table_.restart();
  add({{0, 3, 1, 7}, ""});
  expectWritten("clef 1 at 7\n");
}

// --- items without text ---

TEST_F(WriteFile, EndsAnItemWithItsLastParameterThatIsNotZero) {
  add({{0, 4, 1}, ""});
  add({{0, 4, 1, 5}, ""});
  add({{0, 4, 1, 0, 0, 7, 0, 0}, ""});
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({2, 4, 1}) + words({3, 4, 1, 5}) + words({5, 4, 1, 0, 0, 7})));
  EXPECT_EQ(hex(file().substr(0, 2)), hex(header(3 + 4 + 6 + 6)));
}

TEST_F(WriteFile, GivesAnItemTwentyParametersAtMost) {
  Item item{{0, 4, 1}, ""};
  item.par[20] = 2.5F;
  add(item);
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({20, 4, 1}) + zeroWords(17) + words({2.5F})));
}

TEST_F(WriteFile, TakesAZeroOfEitherSignAtTheEndForZero) {
  add({{0, 4, 1, -0.0F, 3, -0.0F, 0, -0.0F}, ""});
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({4, 4, 1, -0.0F, 3})));
}

TEST_F(WriteFile, WritesWhatIsNoNumberAsItIs) {
  add({{0, 4, 1, infinity, 0, -infinity, 0, notANumber}, ""});
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({7, 4, 1, infinity, 0, -infinity, 0, notANumber})));
}

TEST_F(WriteFile, DropsTheTextOfAnItemThatHasNone) {
  add({{0, 4, 1, 5}, "text"});
  add({{0, 11.5F, 1, 5}, "text"});
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({3, 4, 1, 5}) + words({3, 11.5F, 1, 5})));
}

TEST_F(WriteFile, SetsP4OfStavesToZero) {
  take("staff 1 at 5 p4 7 lines 5\nstaff 2 at 5 p4 7\nstaff 2 at 0 p4 0x7FC00000\n");
  expectWritten("staff 1 at 5 lines 5\nstaff 2 at 5\nstaff 2 at 0\n");
  EXPECT_EQ(asText(table_), "staff 1 at 5 lines 5\nstaff 2 at 5\nstaff 2 at 0\n") << "in the table too";
}

TEST_F(WriteFile, LeavesP4OfOtherTypesAsItIs) {
  const std::string others = "barline 1 at 5 spans 7\nnote 1 at 5 height 7\nitem 7 1 5 7\nitem 8.5 1 5 7\n";
  take(others);
  expectWritten(others);
}

TEST_F(WriteFile, LeavesP4OfStavesThatAreNotWrittenAsItIs) {
  const std::string staves = "staff 33 at 5 p4 7\nstaff 0 at 5 p4 7\nstaff 1.5 at 5 p4 7\n";
  take(staves + "staff 1 at 5 p4 7\n");
  table_.itemPar(4, 1) = 999;
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(asText(table_), staves + "item 999 1 at 5 p4 7\n");
}

// --- texts ---

TEST_F(WriteFile, FillsAShortTextUpToEightCharacters) {
  takeText(11, "ABCDE");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({15, 11, 1}) + zeroWords(11) + "ABCDE   "));
  EXPECT_EQ(readBack(), "shorttext 1 at 0 \"ABCDE\"\n");
  takeText(11, "");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({15, 11, 1}) + zeroWords(11) + "        "));
  takeText(11, "ABCDEFGH");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({15, 11, 1}) + zeroWords(11) + "ABCDEFGH"));
  EXPECT_EQ(readBack(), "shorttext 1 at 0 \"ABCDE\"\n");
}

TEST_F(WriteFile, FillsATextUpToTwentyFourCharacters) {
  takeText(15, "Vivo");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({19, 15, 1}) + zeroWords(11) + "Vivo                    "));
  takeText(15, "");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({19, 15, 1}) + zeroWords(11) + std::string(24, ' ')));
  takeText(15, "Allegro, ma non troppo !");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({19, 15, 1}) + zeroWords(11) + "Allegro, ma non troppo !"));
  takeText(15, "Allegro, ma non troppo, e un poco...");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({22, 15, 1}) + zeroWords(11) + "Allegro, ma non troppo, e un poco..."));
}

TEST_F(WriteFile, FillsACountedTextUpToWholeChunksAndCountsItsCharacters) {
  takeText(16, "Allegro");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({15, 16, 1}) + zeroWords(9) + words({7, 0}) + "Allegro "));
  EXPECT_EQ(asText(table_), "countedtext 1 at 0 characters 7 \"Allegro\"\n") << "in the table too";
  EXPECT_EQ(readBack(), "countedtext 1 at 0 characters 7 \"Allegro\"\n");
  takeText(16, "Vivo");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({14, 16, 1}) + zeroWords(9) + words({4, 0}) + "Vivo"));
  takeText(16, "x");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({14, 16, 1}) + zeroWords(9) + words({1, 0}) + "x   "));
}

TEST_F(WriteFile, CountsTheBlanksAtTheEndOfACountedText) {
  takeText(16, "AB ");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(readBack(), "countedtext 1 at 0 characters 3 \"AB \"\n");
}

TEST_F(WriteFile, OfAnEmptyCountedTextHasNoChunkAndIsABrokenPage) {
  takeText(16, "");
  table_.itemPar(1, 12) = 7;
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file()), hex(header(20) + words({13, 16, 1}) + zeroWords(11) + trailer()));
  EXPECT_EQ(asText(table_), "countedtext 1 at 0\n");
  expectBrokenPage();
}

TEST_F(WriteFile, LeavesP12AsItIsInOtherTextsAndWhereNothingIsWritten) {
  take(
      "shorttext 1 at 5 p12 99 \"mf   \"\n"
      "text 1 at 5 p12 99 \"Allegro, ma non troppo !\"\n"
      "countedtext 33 at 5 characters 3 \"Vivo\"\n"
      "countedtext 1 at 5 characters 3 \"Vivo\"\n"
      "countedtext 1 at 6 characters 99 \"Vivo\"\n");
  table_.itemPar(4, 1) = 999;
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(asText(table_),
            "shorttext 1 at 5 p12 99 \"mf   \"\n"
            "text 1 at 5 p12 99 \"Allegro, ma non troppo !\"\n"
            "countedtext 33 at 5 characters 3 \"Viv\"\n"
            "item 999 1 at 5 p12 3 \"Viv\"\n"
            "countedtext 1 at 6 characters 4 \"Vivo\"\n");
  EXPECT_EQ(readBack(),
            "shorttext 1 at 5 p12 99 \"mf   \"\n"
            "text 1 at 5 p12 99 \"Allegro, ma non troppo !\"\n"
            "countedtext 1 at 6 characters 4 \"Vivo\"\n");
}

TEST_F(WriteFile, WritesThirteenParametersOfEveryTextAndNoMore) {
  for (const float type : {11.0F, 15.0F, 16.0F}) {
    SCOPED_TRACE(type);
    Item item;
    for (std::size_t p = 1; p <= 20; ++p) {
      item.par[p] = static_cast<float>(100 + p);
    }
    item.par[1] = type;
    item.par[2] = 1;
    table_.restart();
    item.text = "12345678123456781234567812345678";
    add(item);
    ASSERT_EQ(write(), std::nullopt);
    const float p12 = type == 16 ? 32 : 112;
    EXPECT_EQ(hex(items()), hex(words({21, type, 1, 103, 104, 105, 106, 107, 108, 109, 110, 111, p12, 113}) +
                                "12345678123456781234567812345678"));
  }
}

TEST_F(WriteFile, WritesTextsByteForByte) {
  const std::string text("\xE4\0\"\\\r\n\x80\xFF", 8);
  takeText(16, text);
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items().substr(std::size_t{4} * 14)), hex(text));
  EXPECT_EQ(table_.itemPar(1, 12), 8);
}

// --- texts that are no whole chunks ---

TEST_F(WriteFile, GivesATextOfBrokenChunksAFractionalLength) {
  takeText(11, "123456789");
  add({{0, 4, 1, 5}, ""});
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file()),
            hex(header(26) + words({15.25F, 11, 1}) + zeroWords(11) + "123456789" + words({3, 4, 1, 5}) + trailer()));
  expectBrokenPage();
}

TEST_F(WriteFile, GivesALongTextOfBrokenChunksAFractionalLengthToo) {
  takeText(15, "Allegro, ma non troppo ...!");
  add({{0, 4, 1, 5}, ""});
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()),
            hex(words({19.75F, 15, 1}) + zeroWords(11) + "Allegro, ma non troppo ...!" + words({3, 4, 1, 5})));
  expectBrokenPage();
}

TEST_F(WriteFile, RoundsHalfAChunkToTheEvenWordCount) {
  takeText(11, "1234567890");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file()), hex(header(16 + 6) + words({15.5F, 11, 1}) + zeroWords(11) + "1234567890" + trailer()))
      << "16.5 words are counted as 16";
  table_.restart();
  add({{0, 4, 1}, ""});
  add({{0, 11, 1}, "1234567890"});
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file().substr(0, 2)), hex(header(20 + 6))) << "19.5 words are counted as 20";
}

TEST_F(WriteFile, RoundsTheWordCountAfterEveryText) {
  table_.restart();
  for (int n = 0; n < 3; ++n) {
    add({{0, 11, 1}, "123456789"});
  }
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file().substr(0, 2)), hex(header(3 * 16 + 6))) << "three times 16.25";
  table_.restart();
  for (int n = 0; n < 3; ++n) {
    add({{0, 11, 1}, "12345678901"});
  }
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file().substr(0, 2)), hex(header(3 * 17 + 6))) << "three times 16.75";
}

// --- the longest page ---

class LongestPage : public WriteFile {
 protected:
  void SetUp() override { host_.addFile("C:\\P.MUS", "the old file"); }

  /// Items of 21 words each, and two that make up for the rest.
  void takeItemsOf(int wordCount) {
    table_.restart();
    Item longest{{0, 4, 1}, ""};
    longest.par[20] = 1;
    for (; wordCount > 42; wordCount -= 21) {
      add(longest);
    }
    for (const int count : {wordCount / 2, wordCount - wordCount / 2}) {
      Item item{{0, 4, 1}, ""};
      item.par[static_cast<std::size_t>(count - 1)] = 1;
      add(item);
    }
  }

  /// A single text item of so many words, 14 of them before its chunks.
  void takeTextOf(std::size_t wordCount) { takeText(15, std::string(4 * (wordCount - 14), 'x')); }

  void expectOverflow() {
    host_.messages.clear();
    EXPECT_EQ(write(), 1);
    EXPECT_EQ(host_.messages, std::vector<Message>{critical(overflow)});
    EXPECT_EQ(file(), "the old file");
    EXPECT_EQ(host_.calls, std::vector<std::string>{});
  }
};

TEST_F(LongestPage, HasTheMostWordsThatSixteenBitsCount) {
  takeItemsOf(32767 - 6);
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file().substr(0, 2)), "FF 7F ");
  EXPECT_EQ(file().size(), 2U + 4U * 32767U);
  EXPECT_EQ(readBack(), asText(table_));
}

TEST_F(LongestPage, HasNotOneWordMore) {
  takeItemsOf(32767 - 5);
  expectOverflow();
}

TEST_F(LongestPage, IsNotExceededByItsItemsEither) {
  takeItemsOf(32768);
  expectOverflow();
  takeItemsOf(65536 + 100);
  expectOverflow();
}

TEST_F(LongestPage, MayBeASingleText) {
  takeTextOf(32767 - 6);
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file().substr(0, 2)), "FF 7F ");
  EXPECT_EQ(readBack(), asText(table_));
}

TEST_F(LongestPage, IsNotExceededByATextEither) {
  takeTextOf(32767 - 5);
  expectOverflow();
  takeTextOf(65536 + 100);
  expectOverflow();
}

// --- the file in its place ---

TEST_F(WriteFile, ReplacesTheOldFile) {
  host_.addFile("C:\\P.MUS", page("note 1 at 1\nnote 1 at 2\nnote 1 at 3\n"));
  take("clef 1 at 7\n");
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
  take("note 1 at 1\n");
  EXPECT_EQ(write(), 1);
  EXPECT_EQ(host_.messages, std::vector<Message>{critical("Open of output MUS file failed. Hit OK to terminate.")});
  EXPECT_EQ(file(), "the old file");
  EXPECT_EQ(host_.calls, std::vector<std::string>{}) << "nothing was deleted first";
}

// --- round trips ---

TEST_F(WriteFile, GivesEveryTypeBackAsItWas) {
  std::string items;
  for (int type = 1; type <= 18; ++type) {
    if (type != 11 && type != 15 && type != 16 && type != 8) {
      const std::string line = std::to_string(type) + " 1 " + std::to_string(10 * type);
      ((items += "item ") += line) += " 3 0 -2.5\n";
      ((items += "item ") += line) += "\n";
    }
  }
  items +=
      "item 1.5 1 200 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17\n"
      "shorttext 1 at 210 p4 3 p12 4 \"mf\"\n"
      "staff 2 at 0 lines 5 instrument 7 p18 3 p19 2 p20 1\n"
      "text 2 at 220 p13 4 \"Allegro\"\n"
      "text 2 at 225 \"Allegro, ma non troppo, e un poco\"\n"
      "countedtext 3 at 230 \"x\"\n"
      "countedtext 3 at 230 \"a \\\"quoted\\\" text  \"\n";
  take(items);
  const std::string before = asText(table_);
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(readBack(), before);
  EXPECT_EQ(asText(table_), before);
}

TEST_F(WriteFile, LosesTheWordThirteenThatReadersDrop) {
  take("shorttext 1 at 5 p13 4 \"mf\"\ncountedtext 1 at 6 p13 4 \"mf\"\ntext 1 at 7 p13 4 \"mf\"\n");
  expectWritten("shorttext 1 at 5 \"mf\"\ncountedtext 1 at 6 \"mf\"\ntext 1 at 7 p13 4 \"mf\"\n");
}

std::string randomText(Dice& dice, float type) {
  std::size_t length = 1 + dice.below(30);
  if (type == 11) {
    length = 5;
  } else if (type == 15) {
    length = 24 + 4 * dice.below(4);
  }
  std::string text;
  for (; length > 0; --length) {
    text.push_back(static_cast<char>(dice.below(256)));
  }
  return text;
}

/// An item as the reader stores it.
Item randomItem(Dice& dice) {
  constexpr float types[] = {1, 2, 3, 8, 8, 8.5F, 11, 11, 14, 15, 15, 16, 16, 16, 17.25F, 18};
  constexpr float staves[] = {0, 1, 1, 2, 2, 3, 7, 31, 32, 33, 2.5F, -1, notANumber};
  constexpr float numbers[] = {0, 0, 0, 0, 1, -1, 0.1F, 1E-45F, -3E38F, 16777216, infinity, notANumber};
  Item item;
  item.par[1] = types[dice.below(std::size(types))];
  item.par[2] = staves[dice.below(std::size(staves))];
  const bool hasText = item.par[1] == 11 || item.par[1] == 15 || item.par[1] == 16;
  const std::size_t lastOfText = item.par[1] == 15 ? 13 : 12;
  const std::size_t last = hasText ? lastOfText : 2 + dice.below(19);
  for (std::size_t p = 3; p <= last; ++p) {
    item.par[p] = numbers[dice.below(std::size(numbers))];
  }
  if (hasText) {
    item.text = randomText(dice, item.par[1]);
  }
  return item;
}

/// The items that a page file of the table holds.
ItemTable writtenPart(FakeHost& host, const ItemTable& table) {
  ItemTable part;
  for (int staff = 1; staff <= 32; ++staff) {
    for (int i = 1; i <= table.itemCount(); ++i) {
      if (table.itemPar(i, 2) != static_cast<float>(staff)) {
        continue;
      }
      Item item;
      for (int p = 1; p <= 20; ++p) {
        item.par[static_cast<std::size_t>(p)] = table.itemPar(i, p);
      }
      item.text = table.itemText(i);
      if (item.par[1] == 8) {
        item.par[4] = 0;
      }
      if (item.par[1] == 16) {
        item.par[12] = static_cast<float>(item.text.size());
      }
      part.store_item(host, item);
    }
  }
  return part;
}

TEST_F(WriteFile, GivesRandomPagesBackAndWritesThemAgainToTheSameBytes) {
  int itemsRead = 0;
  for (std::uint32_t seed = 1; seed <= 150; ++seed) {
    SCOPED_TRACE(seed);
    Dice dice(seed);
    table_.restart();
    for (std::uint32_t count = 1 + dice.below(40); count > 0; --count) {
      add(randomItem(dice));
    }
    const std::string expected = asText(writtenPart(host_, table_));
    ASSERT_EQ(write(), std::nullopt);
    const std::string first = file();
    readFile(host_, "C:\\P.MUS", table_);
    ASSERT_EQ(asText(table_), expected);
    itemsRead += table_.itemCount();
    if (table_.itemCount() > 0) {
      ASSERT_EQ(write(), std::nullopt);
      ASSERT_EQ(dumpPage(file()), dumpPage(first));
      ASSERT_TRUE(file() == first);
    }
  }
  EXPECT_GT(itemsRead, 1000);
}

}  // namespace
}  // namespace kiv
