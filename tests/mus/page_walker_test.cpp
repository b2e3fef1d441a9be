#include "mus/page_walker.h"

#include <string>
#include <vector>

#include "tests/mus/page_items.h"

namespace kiv::test {
namespace {

// --- header and end of the items ---

TEST(PageHeader, IsASigned16BitNumberWithTheLowByteFirst) {
  EXPECT_EQ(PageWalker(bytes("0A 01")).fileWords(), 266);
  EXPECT_EQ(PageWalker(bytes("FF FF")).fileWords(), -1);
  EXPECT_EQ(PageWalker(bytes("00 80")).fileWords(), -32768);
}

TEST(PageHeader, ThatIsNotThereIsAStructuralErrorBeforeAnyItem) {
  for (const std::string& file : {std::string(), bytes("06")}) {
    PageWalker page(file);
    EXPECT_EQ(page.fileWords(), -1);
    EXPECT_EQ(page.findItem(), ReadStatus::structuralError);
    EXPECT_EQ(page.itemsInFile(), 0);
  }
}

TEST(PageHeader, BelowZeroIsAStructuralErrorBeforeAnyItem) {
  for (const int count : {-1, -5, -6, -32768}) {
    const std::string file = header(count) + plainItem(4) + trailer();
    PageWalker page(file);
    EXPECT_EQ(page.findItem(), ReadStatus::structuralError) << count;
    EXPECT_EQ(page.itemsInFile(), 0) << count;
  }
}

TEST(PageHeader, OfZeroBeginsAnItem) {
  PageWalker page(header(0));
  EXPECT_EQ(page.findItem(), ReadStatus::structuralError);
  EXPECT_EQ(page.itemsInFile(), 1);
}

TEST(PageHeader, SmallerThanATrailerStillReadsItsFirstItem) {
  for (const int count : {0, 1, 2, 3, 4}) {
    const std::string file = header(count) + plainItem(4) + trailer();
    PageWalker page(file);
    EXPECT_EQ(page.findItem(), ReadStatus::itemRead) << count;
    EXPECT_EQ(page.findItem(), ReadStatus::structuralError) << "5 words read of " << count;
    EXPECT_EQ(page.itemsInFile(), 1) << count;
  }
}

TEST(PageHeader, OfSixAndOnlyTheTrailerIsAnEmptyPage) {
  const std::string file = header(6) + trailer();
  PageWalker page(file);
  EXPECT_EQ(page.findItem(), ReadStatus::endOfItems);
  EXPECT_EQ(page.itemsInFile(), 0);
  EXPECT_EQ(page.trailerNumberText(), "0 ");
}

TEST(PageHeader, OfFiveEndsWithoutReadingTheTrailer) {
  const std::string file = header(5) + zeroWords(1) + bytes("07 00 00 00") + zeroWords(3);
  PageWalker page(file);
  EXPECT_EQ(page.findItem(), ReadStatus::endOfItems);
  EXPECT_EQ(page.wordsRead(), 0);
  EXPECT_EQ(page.position(), 2U);
  EXPECT_EQ(page.trailerNumberText(), "");
  EXPECT_EQ(page.unitText(), "");
}

TEST(PageHeader, ThatCountsATrailerOfFiveWordsIsAccepted) {
  const std::string file = header(5 + 5) + plainItem(4) + zeroWords(5);
  PageWalker page(file);
  EXPECT_EQ(page.findItem(), ReadStatus::itemRead);
  EXPECT_EQ(page.findItem(), ReadStatus::endOfItems);
  EXPECT_EQ(page.wordsRead(), 5);
  EXPECT_EQ(page.trailerNumberText(), "");
}

TEST(PageHeader, TwoWordsTooSmallLetsTheTrailerBeReadAsAnItem) {
  const std::string file = header(5 + 6 - 2) + plainItem(4) + trailer();
  PageWalker page(file);
  EXPECT_EQ(page.findItem(), ReadStatus::itemRead);
  EXPECT_EQ(page.findItem(), ReadStatus::structuralError) << "two blanks are no length";
  EXPECT_EQ(page.itemsInFile(), 2);
}

TEST(PageHeader, EndIsNotLookedForWithinAnItem) {
  // By the header the trailer begins after 3 words. The item there is 5 words long.
  const std::string file = header(3 + 6) + plainItem(4) + plainItem(5) + trailer();
  PageWalker page(file);
  EXPECT_EQ(page.findItem(), ReadStatus::itemRead);
  EXPECT_EQ(page.findItem(), ReadStatus::itemRead) << "5 words are neither 3 nor 4";
  EXPECT_EQ(page.findItem(), ReadStatus::structuralError) << "10 words are more than 9";
  EXPECT_EQ(page.itemsInFile(), 2);
}

TEST(PageHeader, ThatTheWordsReadHaveReachedButNotPassedBeginsAnotherItem) {
  // Items of 6 and 4 words step over the places where a trailer of 6 or of 5 words would begin.
  const std::string file = header(10) + words({5, 4, 1, 50, 0, 0}) + words({3, 4, 1, 50}) + plainItem(6);
  PageWalker page(file);
  EXPECT_EQ(page.findItem(), ReadStatus::itemRead);
  EXPECT_EQ(page.findItem(), ReadStatus::itemRead);
  EXPECT_EQ(page.wordsRead(), 10);
  EXPECT_EQ(page.findItem(), ReadStatus::itemRead) << "10 words are not more than 10";
  EXPECT_EQ(page.findItem(), ReadStatus::structuralError);
}

// --- length word and type ---

TEST(ItemLength, IsRoundedHalvesToEven) {
  const std::pair<float, int> lengths[] = {{2, 2}, {1.5F, 2}, {2.5F, 2}, {2.51F, 3}, {3.5F, 4}, {1.50001F, 2}};
  for (const auto& [length, whole] : lengths) {
    const std::string file = header(100) + words({length, 4, 1, 50, 6});
    PageWalker page(file);
    EXPECT_EQ(page.findItem(), ReadStatus::itemRead) << length;
    EXPECT_EQ(page.itemLength(), whole) << length;
    EXPECT_EQ(page.lengthWord(), length);
    EXPECT_EQ(page.wordsRead(), 1 + whole) << length;
  }
}

TEST(ItemLength, BelowTwoIsAStructuralError) {
  for (const float length : {1.4999F, 1.0F, 0.5F, 0.0F, -0.0F, -1.0F, -4.0F, -infinity, notANumber, -notANumber}) {
    const std::string file = header(100) + words({length, 4, 1, 50, 6});
    PageWalker page(file);
    EXPECT_EQ(page.findItem(), ReadStatus::structuralError) << length;
    EXPECT_EQ(page.itemsInFile(), 1) << length;
  }
}

TEST(ItemLength, ThatNo16BitNumberHoldsIsAStructuralError) {
  for (const float length : {32767.5F, 32768.0F, 65538.0F, 3E9F, 4294967300.0F, 1E30F, infinity}) {
    const std::string file = header(100) + textItem(length, 15, 0, 0, std::string(40000 * 4, 'A'));
    EXPECT_EQ(firstStatus(file), ReadStatus::structuralError) << length;
  }
}

TEST(ItemLength, MayBeTheHighest16BitNumber) {
  for (const float length : {32767.0F, 32767.25F}) {
    const std::string file = header(100) + textItem(length, 15, 0, 0, std::string((32767 - 13) * 4, 'A'));
    EXPECT_EQ(firstStatus(file), ReadStatus::itemRead) << length;
    EXPECT_EQ(firstItem(file).text, std::string((32767 - 13) * 4, 'A'));
  }
}

TEST(ItemType, OutsideOneToEighteenIsAStructuralError) {
  for (const float type : {0.0F, 0.99F, -1.0F, -11.0F, 18.0001F, 18.5F, 19.0F, 999.0F, infinity, notANumber}) {
    const std::string file = pageOf(plainItem(type));
    PageWalker page(file);
    EXPECT_EQ(page.findItem(), ReadStatus::structuralError) << type;
    EXPECT_EQ(page.itemsInFile(), 1) << type;
  }
}

TEST(ItemType, InsideOneToEighteenNeedNotBeWhole) {
  for (const float type : {1.0F, 1.5F, 7.25F, 17.99F, 18.0F}) {
    EXPECT_EQ(firstItem(pageOf(plainItem(type)))[1], type);
  }
}

TEST(ItemType, OfOneAndEighteenIsOneWhateverTheLength) {
  for (const float type : {1.0F, 18.0F}) {
    EXPECT_EQ(firstStatus(pageOf(words({2.25F, type}) + zeroWords(1))), ReadStatus::itemRead) << type;
    EXPECT_EQ(firstStatus(pageOf(words({21, type}) + zeroWords(20))), ReadStatus::tooManyParameters) << type;
  }
}

TEST(ItemType, NextToATextTypeHasNoText) {
  for (const float type : {10.999F, 11.001F, 14.5F, 15.001F, 15.999F, 16.5F}) {
    const Item item = firstItem(pageOf(plainItem(type)));
    EXPECT_EQ(item[1], type);
    EXPECT_EQ(item[4], 6) << type;
    EXPECT_EQ(item.text, "") << type;
  }
}

// --- counters ---

TEST(WalkCounters, CountWordsItemsAndBytes) {
  const std::string file = pageOf(plainItem(4) + textItem(14, 15, 0, 0, "ABCD"));
  PageWalker page(file);
  EXPECT_EQ(page.wordsRead(), 0);
  EXPECT_EQ(page.itemsInFile(), 0);
  EXPECT_EQ(page.position(), 2U);

  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  EXPECT_EQ(page.wordsRead(), 5);
  EXPECT_EQ(page.itemsInFile(), 1);
  EXPECT_EQ(page.itemOffset(), 2U);
  EXPECT_EQ(page.position(), 2U + 4 * 5);

  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  EXPECT_EQ(page.wordsRead(), 5 + 15);
  EXPECT_EQ(page.itemsInFile(), 2);
  EXPECT_EQ(page.itemOffset(), 2U + 4 * 5);

  ASSERT_EQ(page.findItem(), ReadStatus::endOfItems);
  EXPECT_EQ(page.itemsInFile(), 2) << "the trailer is no item";
}

TEST(WalkCounters, LeaveOutTheSingleBytesOfTheTrailerNumber) {
  const std::string file = header(6) + trailer();
  PageWalker page(file);
  ASSERT_EQ(page.findItem(), ReadStatus::endOfItems);
  EXPECT_EQ(page.wordsRead(), 3) << "words 1, 3 and 4 of the trailer; the second is read byte by byte";
  EXPECT_EQ(page.position(), 2U + 4 * 4);
}

TEST(WalkCounters, CountTheItemThatIsBroken) {
  ReadStatus last{};
  const std::string wrongType = pageOf(plainItem(4) + plainItem(4) + plainItem(0));
  EXPECT_EQ(walked(wrongType, last).itemsInFile(), 3);
  EXPECT_EQ(last, ReadStatus::structuralError);
  const std::string tooLong = pageOf(plainItem(4) + words({21, 4}) + zeroWords(20));
  EXPECT_EQ(walked(tooLong, last).itemsInFile(), 2);
  EXPECT_EQ(last, ReadStatus::tooManyParameters);
}

// --- trailer ---

/// An empty page with this trailer number, fourth byte and unit flag, and nothing that anyone needs in the rest.
std::string pageWithTrailer(const std::string& numberWord, const std::string& unitFlag) {
  return header(6) + "abcd" + numberWord + "efgh" + unitFlag + "ijklmnop";
}

TEST(Trailer, NumberHasThreeBytesTheLowestFirst) {
  const std::pair<const char*, const char*> numbers[] = {{"00 00 00 00", "0 "},        {"01 02 03 00", "197121 "},
                                                         {"FF 00 00 00", "255 "},      {"00 01 00 00", "256 "},
                                                         {"FF FF FF 00", "16777215 "}, {"07 00 00 FF", "7 "}};
  ReadStatus last{};
  for (const auto& [listing, text] : numbers) {
    const std::string file = pageWithTrailer(bytes(listing), zeroWords(1));
    EXPECT_EQ(walked(file, last).trailerNumberText(), text) << listing;
    EXPECT_EQ(last, ReadStatus::endOfItems);
  }
}

TEST(Trailer, UnitIsInchesForZeroOfEitherSignAndMetricForAllElse) {
  ReadStatus last{};
  for (const float flag : {0.0F, -0.0F}) {
    const std::string file = pageWithTrailer(zeroWords(1), words({flag}));
    EXPECT_EQ(walked(file, last).unitText(), "(Inches)") << flag;
  }
  for (const float flag : {1.0F, -1.0F, 0.5F, 1E-45F, infinity, notANumber}) {
    const std::string file = pageWithTrailer(zeroWords(1), words({flag}));
    EXPECT_EQ(walked(file, last).unitText(), "(Metric)") << flag;
  }
}

TEST(Trailer, CutOffReadsItsMissingBytesAsZero) {
  const std::string file = pageWithTrailer(bytes("01 02 03 00"), words({1}));
  ReadStatus last{};
  for (std::size_t size = 2; size <= file.size(); ++size) {
    const PageWalker page = walked(std::string_view(file).substr(0, size), last);
    EXPECT_EQ(last, ReadStatus::endOfItems) << size << " bytes";
    const int number = (size > 6 ? 1 : 0) + (size > 7 ? 2 * 256 : 0) + (size > 8 ? 3 * 65536 : 0);
    EXPECT_EQ(page.trailerNumberText(), std::to_string(number) + " ") << size << " bytes";
    // 1 is stored as 00 00 80 3F: its third byte is the first that makes the flag other than 0.
    EXPECT_EQ(page.unitText(), size > 16 ? "(Metric)" : "(Inches)") << size << " bytes";
  }
}

TEST(Trailer, BelongsToOneFile) {
  const std::string file = pageWithTrailer(bytes("07 00 00 00"), words({1}));
  PageWalker page(file);
  ASSERT_EQ(page.findItem(), ReadStatus::endOfItems);
  page = PageWalker(header(5));
  EXPECT_EQ(page.trailerNumberText(), "");
  EXPECT_EQ(page.wordsRead(), 0);
}

}  // namespace
}  // namespace kiv::test
