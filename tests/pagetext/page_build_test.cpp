#include <gtest/gtest.h>

#include "pagetext/page_text.h"
#include "tests/mus/page_bytes.h"
#include "tests/support/pages.h"

namespace kiv {
namespace {

using test::header;
using test::page;
using test::pageOf;
using test::trailer;
using test::words;
using test::zeroWords;

// --- lines ---

TEST(PageTextLines, MayBeNumberedByAnythingOfThatForm) {
  const std::string plain = page("staff 1 at 0 lines 5\nitem 4 1 50\ntrailer\n");
  EXPECT_EQ(page("   1 @2       staff 1 at 0 lines 5\n   2 @34      item 4 1 50\n   3 @50      trailer\n"), plain);
  EXPECT_EQ(page("99 @0 staff 1 at 0 lines 5\n99 @nowhere item 4 1 50\n"), plain);
}

TEST(PageTextLines, MayBeCommentsAndBlank) {
  EXPECT_EQ(page("* a comment\n\n \t\n  * another one\nitem 4 1 50\n* \"\n"), pageOf(words({3, 4, 1, 50})));
}

TEST(PageTextLines, EndWithLineFeedWithOrWithoutCarriageReturnAndTheLastNeedsNone) {
  const std::string two = pageOf(words({3, 4, 1, 50}) + words({3, 5, 1, 60}));
  EXPECT_EQ(page("item 4 1 50\nitem 5 1 60\n"), two);
  EXPECT_EQ(page("item 4 1 50\r\nitem 5 1 60\r\n"), two);
  EXPECT_EQ(page("item 4 1 50\r\nitem 5 1 60\r"), two);
  EXPECT_EQ(page("item 4 1 50\nitem 5 1 60"), two);
}

TEST(PageTextLines, SeparateWordsByBlanksAndTabs) {
  EXPECT_EQ(page("\t item\t4 \t 1   50  "), pageOf(words({3, 4, 1, 50})));
}

TEST(PageTextLines, AcceptWordsAfterTheTextAsWellAsBeforeIt) {
  EXPECT_EQ(page("text 1 at 50 \"ab\" p13 7"), page("text 1 at 50 p13 7 \"ab\""));
}

TEST(PageTextLines, LetTheLastOfEqualWordsCount) {
  EXPECT_EQ(page("note 1 at 50 height 3 height 4"), page("note 1 at 50 height 4"));
  EXPECT_EQ(page("note 1 at 50 height 3 p4 4"), page("note 1 at 50 height 4"));
  EXPECT_EQ(page("text 1 at 50 \"a\" \"b\""), page("text 1 at 50 \"b\""));
}

TEST(PageTextLines, AcceptNumbersInEveryFormThatADumpWrites) {
  EXPECT_EQ(page("item 4 -0 1e-45 0x7FC01234 -1.5e+10 .5 0x0"),
            pageOf(words({7, 4, -0.0F, 1E-45F}) + test::wordOfBits(0x7FC01234) + words({-1.5E10F, 0.5F, 0})));
}

// --- header and end ---

TEST(PageTextHeader, CountsTheWordsUnlessTheTextSaysHowMany) {
  EXPECT_EQ(page("item 4 1 50\n"), header(10) + words({3, 4, 1, 50}) + trailer());
  EXPECT_EQ(page("words 3\nitem 4 1 50\n"), header(3) + words({3, 4, 1, 50}) + trailer());
  EXPECT_EQ(page("item 4 1 50\nwords -2\n"), header(-2) + words({3, 4, 1, 50}) + trailer());
  EXPECT_EQ(page("words none\nitem 4 1 50\n"), words({3, 4, 1, 50}) + trailer());
}

TEST(PageTextEnd, IsTheStandardTrailerUnlessTheTextSaysAnother) {
  EXPECT_EQ(page("trailer\n"), header(6) + trailer());
  EXPECT_EQ(page("trailer none\n"), header(0));
  EXPECT_EQ(page("bytes 01 fF\nwords 6\n"), header(6) + "\x01\xFF");
  EXPECT_EQ(page("bytes 01 02 03 04\n"), header(1) + "\x01\x02\x03\x04");
  EXPECT_EQ(page("bytes\n"), header(0));
  EXPECT_EQ(page("trailer\nbytes 01 02\nwords 6\n"), header(6) + trailer() + "\x01\x02");
}

TEST(PageTextEnd, MayBeBeforeItems) {
  EXPECT_EQ(page("bytes 01 02 03 04\nitem 4 1 50\n"), header(5) + "\x01\x02\x03\x04" + words({3, 4, 1, 50}));
}

TEST(PageTextItems, MayHaveAnyNumberOfParametersWithoutAName) {
  EXPECT_EQ(page("item 4"), pageOf(words({1, 4})));
  EXPECT_EQ(page("item 4 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0"), pageOf(words({21, 4}) + zeroWords(20)));
  EXPECT_EQ(page("item 15 1 50"), pageOf(words({3, 15, 1, 50}))) << "a text item without text, too";
  EXPECT_EQ(page("item 4 1 50 length 2.51"), pageOf(words({2.51F, 4, 1, 50})));
}

TEST(PageTextItems, WithANameHaveNoParametersBeyondTheirLastThatIsNotZero) {
  EXPECT_EQ(page("note 1 at 50 height 0 p9 0"), pageOf(words({3, 1, 1, 50})));
  EXPECT_EQ(page("note 1 at 50 p9 2 p9 0"), pageOf(words({3, 1, 1, 50})));
  EXPECT_EQ(page("note 1 at 0"), pageOf(words({2, 1, 1})));
  EXPECT_EQ(page("note 0 at 0"), pageOf(words({2, 1, 0}))) << "no item is shorter than 2";
  EXPECT_EQ(page("note 1 at 50 length 5"), pageOf(words({5, 1, 1, 50, 0, 0})));
}

TEST(PageTextItems, OfTextMayBeLongerThanTheirText) {
  EXPECT_EQ(page("text 1 at 50 \"abcde\" length 16"), pageOf(words({16, 15, 1, 50}) + zeroWords(10) + "abcde       "));
  EXPECT_EQ(page("text 1 at 50 \"\" length 13"), pageOf(words({13, 15, 1, 50}) + zeroWords(10)))
      << "although no reader takes it";
}

// --- errors ---

struct Mistake {
  const char* text;
  int line;
  const char* reason;
};

void PrintTo(const Mistake& mistake, std::ostream* out) {
  *out << mistake.text;
}

class PageTextMistake : public testing::TestWithParam<Mistake> {};

TEST_P(PageTextMistake, IsReportedWithItsLineAndReason) {
  const auto& [text, line, reason] = GetParam();
  const auto built = buildPage(text);
  ASSERT_TRUE(std::holds_alternative<PageTextError>(built));
  EXPECT_EQ(std::get<PageTextError>(built).line, line);
  EXPECT_EQ(std::get<PageTextError>(built).reason, reason);
}

const Mistake mistakesInItems[] = {
    {"hello", 1, "unknown word \"hello\""},
    {"note 1 at 5\nnote 1 at 6\nnotes 1 at 7\nhello", 3, "unknown word \"notes\""},
    {"* comment\r\n\r\nnote\r\n", 3, "the staff is missing at the end of the line"},
    {"note x at 5", 1, "\"x\" is no number for the staff"},
    {"note \"1\" at 5", 1, "\"1\" is no number for the staff"},
    {"note 1", 1, "\"at\" is missing at the end of the line"},
    {"note 1 on 5", 1, "after the staff comes \"at\" and the position"},
    {"note 1 at", 1, "the position is missing at the end of the line"},
    {"note 1 at here", 1, "\"here\" is no number for the position"},
    {"note 1 at 0x", 1, "\"0x\" is no number for the position"},
    {"note 1 at 0x1G", 1, "\"0x1G\" is no number for the position"},
    {"note 1 at 0x100000000", 1, "\"0x100000000\" is no number for the position"},
    {"note 1 at 1e99", 1, "\"1e99\" is no number for the position"},
    {"note 1 at 5 height", 1, "height is missing at the end of the line"},
    {"note 1 at 5 height tall", 1, "\"tall\" is no number for height"},
    {"note 1 at 5 p5", 1, "p5 is missing at the end of the line"},
    {"note 1 at 5 lines 5", 1, "\"lines\" is no parameter of note"},
    {"note 1 at 5 p1 8", 1, "\"p1\" is no parameter of note"},
    {"note 1 at 5 p3 8", 1, "\"p3\" is no parameter of note"},
    {"note 1 at 5 p 8", 1, "\"p\" is no parameter of note"},
    {"note 1 at 5 p5x 8", 1, "\"p5x\" is no parameter of note"},
    {"note 1 at 5 p21 8", 1, "\"p21\" is no parameter of note"},
    {"note 1 at 5 p99999999999 8", 1, "\"p99999999999\" is no parameter of note"},
    {"text 1 at 5 \"a\" p14 8", 1, "\"p14\" is no parameter of text"},
    {"note 1 at 5 \"a\"", 1, "note carries no text"},
    {"text 1 at 5", 1, "text needs its text in quotes"},
    {"shorttext 1 at 5 p4 1", 1, "shorttext needs its text in quotes"},
    {"note 1 at 5 length", 1, "length is missing at the end of the line"},
    {"note 1 at 5 length long", 1, "\"long\" is no number for length"},
    {"note 1 at 5 height 2 length 3", 1, "the length 3 does not fit an item whose last parameter is P4"},
    {"note 1 at 5 length 21", 1, "the length 21 does not fit an item whose last parameter is P3"},
    {"note 1 at 5 length -1", 1, "the length -1 does not fit an item whose last parameter is P3"},
    {"note 1 at 5 length 0x7FC00000", 1, "the length 0x7FC00000 does not fit an item whose last parameter is P3"},
};

INSTANTIATE_TEST_SUITE_P(InItems, PageTextMistake, testing::ValuesIn(mistakesInItems));

const Mistake mistakesInTexts[] = {
    {"text 1 at 5 \"a", 1, "the text has no closing quote"},
    {"text 1 at 5 \"", 1, "the text has no closing quote"},
    {"text 1 at 5 \"a\\\"", 1, "the text has no closing quote"},
    {"text 1 at 5 \"a\\", 1, "the text has no closing quote"},
    {"text 1 at 5 \"\\xZ1\"", 1, "\"Z1\" is no byte of two hexadecimal digits"},
    {"text 1 at 5 \"\\xg1\"", 1, "\"g1\" is no byte of two hexadecimal digits"},
    {"text 1 at 5 \"\\x1\"", 1, "\"1\"\" is no byte of two hexadecimal digits"},
    {"text 1 at 5 \"\\x1", 1, "\"1\" is no byte of two hexadecimal digits"},
    {"text 1 at 5 \"\\x", 1, "\"\" is no byte of two hexadecimal digits"},
    {"text 1 at 5 \"abcde\" length 14", 1, "the length 14 leaves no room for the text"},
    {"text 1 at 5 \"\" length 12", 1, "the length 12 leaves no room for the text"},
    {"text 1 at 5 \"\" length 0", 1, "the length 0 leaves no room for the text"},
    {"text 1 at 5 \"\" length -5", 1, "the length -5 leaves no room for the text"},
    {"text 1 at 5 \"\" length 0x7FC00000", 1, "the length 0x7FC00000 leaves no room for the text"},
    {"text 1 at 5 \"\" length 32768", 1, "the length 32768 leaves no room for the text"},
};

INSTANTIATE_TEST_SUITE_P(InTexts, PageTextMistake, testing::ValuesIn(mistakesInTexts));

const Mistake mistakesInOtherLines[] = {
    {"item", 1, "an item has at least its type"},
    {"item length 1", 1, "an item has at least its type"},
    {"item 4 x", 1, "\"x\" is no number for P2"},
    {"item 4 0x", 1, "\"0x\" is no number for P2"},
    {"item 4 0x123456789", 1, "\"0x123456789\" is no number for P2"},
    {"item 4 1e99", 1, "\"1e99\" is no number for P2"},
    {"item 4 nan", 1, "\"nan\" is no number for P2"},
    {"item 4 inf", 1, "\"inf\" is no number for P2"},
    {"item 4 1,5", 1, "\"1,5\" is no number for P2"},
    {"item 4 1 length 3", 1, "the length 3 does not fit 2 parameters"},
    {"item 4 1 length 2 7", 1, "\"7\" stands behind the end of the item"},
    {"item 4 1 length 5 7", 1, "\"7\" stands behind the end of the item"},
    {"words", 1, "the number of words is missing at the end of the line"},
    {"words many", 1, "\"many\" is no number for the number of words"},
    {"words 32768", 1, "the number of words does not fit the header"},
    {"words 3 4", 1, "\"4\" stands behind the end of the item"},
    {"bytes 00 1", 1, "\"1\" is no byte of two hexadecimal digits"},
    {"bytes 00\nbytes 0G", 2, "\"0G\" is no byte of two hexadecimal digits"},
    {"bytes 000", 1, "\"000\" is no byte of two hexadecimal digits"},
    {"trailer now", 1, "\"now\" stands behind the end of the item"},
    {"item 4 1\nbytes 01 02 03\n", 2,
     "the page is 15 bytes long; without a line for its number of words it must be at most 32767 words of 4 bytes"},
    {"1 @2 hello", 1, "unknown word \"hello\""},
    {"1 @2", 1, "unknown word \"1\""},
    {"x @2 note 1 at 5", 1, "unknown word \"x\""},
};

INSTANTIATE_TEST_SUITE_P(InOtherLines, PageTextMistake, testing::ValuesIn(mistakesInOtherLines));

TEST(PageTextMistakes, OfAPageThatIsTooLongForItsHeader) {
  std::string text;
  for (int n = 0; n < 1560; ++n) {
    text += "item 4 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0\n";  // 21 words
  }
  EXPECT_EQ(page(text), pageOf(page(text).substr(2, 4 * 21 * 1560))) << "32766 words";
  const auto built = buildPage(text + "item 4\n");
  ASSERT_TRUE(std::holds_alternative<PageTextError>(built));
  EXPECT_EQ(std::get<PageTextError>(built),
            (PageTextError{1561,
                           "the page is 131072 bytes long; without a line for its number of words it must be at most "
                           "32767 words of 4 bytes"}));
  EXPECT_TRUE(std::holds_alternative<std::string>(buildPage(text + "item 4\nwords 7\n")));
}

}  // namespace
}  // namespace kiv
