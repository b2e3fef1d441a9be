#include "mus/writer.h"
#include "tests/mus/page_bytes.h"
#include "tests/mus/write_file.h"

namespace kiv::test {
namespace {

const std::string overflow = "Run-time error: Overflow\r\nC:\\P.MUS";

// --- texts ---

TEST_F(WriteFile, FillsAShortTextUpToEightCharacters) {
  loadText(11, "ABCDE");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({15, 11, 1}) + zeroWords(11) + "ABCDE   "));
  EXPECT_EQ(readBack(), "shorttext 1 at 0 \"ABCDE\"\n");
  loadText(11, "");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({15, 11, 1}) + zeroWords(11) + "        "));
  loadText(11, "ABCDEFGH");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({15, 11, 1}) + zeroWords(11) + "ABCDEFGH"));
  EXPECT_EQ(readBack(), "shorttext 1 at 0 \"ABCDE\"\n");
}

TEST_F(WriteFile, FillsATextUpToTwentyFourCharacters) {
  loadText(15, "Vivo");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({19, 15, 1}) + zeroWords(11) + "Vivo                    "));
  loadText(15, "");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({19, 15, 1}) + zeroWords(11) + std::string(24, ' ')));
  loadText(15, "Allegro, ma non troppo !");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({19, 15, 1}) + zeroWords(11) + "Allegro, ma non troppo !"));
  loadText(15, "Allegro, ma non troppo, e un poco...");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({22, 15, 1}) + zeroWords(11) + "Allegro, ma non troppo, e un poco..."));
}

TEST_F(WriteFile, FillsACountedTextUpToWholeChunksAndCountsItsCharacters) {
  loadText(16, "Allegro");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({15, 16, 1}) + zeroWords(9) + words({7, 0}) + "Allegro "));
  EXPECT_EQ(asText(table_), "countedtext 1 at 0 characters 7 \"Allegro\"\n") << "in the table too";
  EXPECT_EQ(readBack(), "countedtext 1 at 0 characters 7 \"Allegro\"\n");
  loadText(16, "Vivo");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({14, 16, 1}) + zeroWords(9) + words({4, 0}) + "Vivo"));
  loadText(16, "x");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()), hex(words({14, 16, 1}) + zeroWords(9) + words({1, 0}) + "x   "));
}

TEST_F(WriteFile, CountsTheBlanksAtTheEndOfACountedText) {
  loadText(16, "AB ");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(readBack(), "countedtext 1 at 0 characters 3 \"AB \"\n");
}

TEST_F(WriteFile, OfAnEmptyCountedTextHasNoChunkAndIsABrokenPage) {
  loadText(16, "");
  table_.itemPar(1, 12) = 7;
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file()), hex(header(20) + words({13, 16, 1}) + zeroWords(11) + trailer()));
  EXPECT_EQ(asText(table_), "countedtext 1 at 0\n");
  expectBrokenPage();
}

TEST_F(WriteFile, LeavesP12AsItIsInOtherTextsAndWhereNothingIsWritten) {
  load(
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
    for (int p = 1; p <= 20; ++p) {
      item[p] = static_cast<float>(100 + p);
    }
    item[1] = type;
    item[2] = 1;
    table_.clear();
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
  loadText(16, text);
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items().substr(std::size_t{4} * 14)), hex(text));
  EXPECT_EQ(table_.itemPar(1, 12), 8);
}

// --- texts that are no whole chunks ---

TEST_F(WriteFile, GivesATextOfBrokenChunksAFractionalLength) {
  loadText(11, "123456789");
  add({4, 1, 5});
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file()),
            hex(header(26) + words({15.25F, 11, 1}) + zeroWords(11) + "123456789" + words({3, 4, 1, 5}) + trailer()));
  expectBrokenPage();
}

TEST_F(WriteFile, GivesALongTextOfBrokenChunksAFractionalLengthToo) {
  loadText(15, "Allegro, ma non troppo ...!");
  add({4, 1, 5});
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(items()),
            hex(words({19.75F, 15, 1}) + zeroWords(11) + "Allegro, ma non troppo ...!" + words({3, 4, 1, 5})));
  expectBrokenPage();
}

TEST_F(WriteFile, RoundsHalfAChunkToTheEvenWordCount) {
  loadText(11, "1234567890");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file()), hex(header(16 + 6) + words({15.5F, 11, 1}) + zeroWords(11) + "1234567890" + trailer()))
      << "16.5 words are counted as 16";
  table_.clear();
  add({4, 1});
  add({11, 1}, "1234567890");
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file().substr(0, 2)), hex(header(20 + 6))) << "19.5 words are counted as 20";
}

TEST_F(WriteFile, RoundsTheWordCountAfterEveryText) {
  table_.clear();
  for (int n = 0; n < 3; ++n) {
    add({11, 1}, "123456789");
  }
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file().substr(0, 2)), hex(header(3 * 16 + 6))) << "three times 16.25";
  table_.clear();
  for (int n = 0; n < 3; ++n) {
    add({11, 1}, "12345678901");
  }
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file().substr(0, 2)), hex(header(3 * 17 + 6))) << "three times 16.75";
}

// --- the longest page ---

class LongestPage : public WriteFile {
 protected:
  void SetUp() override { host_.addFile("C:\\P.MUS", "the old file"); }

  /// Items of 21 words each, and two that make up for the rest.
  void loadItemsOf(int wordCount) {
    table_.clear();
    Item longest = itemOf({4, 1});
    longest[20] = 1;
    for (; wordCount > 42; wordCount -= 21) {
      add(longest);
    }
    for (const int count : {wordCount / 2, wordCount - wordCount / 2}) {
      Item item = itemOf({4, 1});
      item[count - 1] = 1;
      add(item);
    }
  }

  /// A single text item of this many words, 14 of them before its chunks.
  void loadTextOf(std::size_t wordCount) { loadText(15, std::string(4 * (wordCount - 14), 'x')); }

  void expectOverflow() {
    host_.messages.clear();
    EXPECT_EQ(write(), 1);
    EXPECT_EQ(host_.messages, std::vector<Message>{critical(overflow)});
    EXPECT_EQ(host_.shown.back().location, (Location{.file = "C:\\P.MUS"}));
    EXPECT_EQ(file(), "the old file");
    EXPECT_EQ(host_.calls, std::vector<std::string>{});
  }
};

TEST_F(LongestPage, HasTheMostWordsThatSixteenBitsCount) {
  loadItemsOf(32767 - 6);
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file().substr(0, 2)), "FF 7F ");
  EXPECT_EQ(file().size(), 2U + 4U * 32767U);
  EXPECT_EQ(readBack(), asText(table_));
}

TEST_F(LongestPage, HasNotOneWordMore) {
  loadItemsOf(32767 - 5);
  expectOverflow();
}

TEST_F(LongestPage, IsNotExceededByItsItemsEither) {
  loadItemsOf(32768);
  expectOverflow();
  loadItemsOf(65536 + 100);
  expectOverflow();
}

TEST_F(LongestPage, MayBeASingleText) {
  loadTextOf(32767 - 6);
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(hex(file().substr(0, 2)), "FF 7F ");
  EXPECT_EQ(readBack(), asText(table_));
}

TEST_F(LongestPage, IsNotExceededByATextEither) {
  loadTextOf(32767 - 5);
  expectOverflow();
  loadTextOf(65536 + 100);
  expectOverflow();
}

}  // namespace
}  // namespace kiv::test
