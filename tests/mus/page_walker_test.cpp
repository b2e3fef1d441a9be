#include "mus/page_walker.h"

#include <bit>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "mus/item_table.h"
#include "tests/mus/page_bytes.h"

namespace kiv {
namespace {

using test::bytes;
using test::header;
using test::pageOf;
using test::trailer;
using test::words;
using test::zeroWords;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// A whole item without text: length 4, the type, staff 1, position 50, P4 of 6.
std::string plainItem(float type) {
  return words({4, type, 1, 50, 6});
}

/// A text item of staff 1 at position 50: P4 .. P11 are 0; the chunks follow P12 and P13.
std::string textItem(float length, float type, float par12, float par13, std::string_view chunks) {
  return words({length, type, 1, 50}) + zeroWords(8) + words({par12, par13}) + std::string(chunks);
}

/// A counted text of one chunk.
std::string countedText(float characters) {
  return textItem(14, 16, characters, 0, "ABCD");
}

ReadStatus firstStatus(std::string_view file) {
  return PageWalker(file).findItem();
}

/// The first item of the page. There must be one.
Item firstItem(std::string_view file) {
  PageWalker page(file);
  EXPECT_EQ(page.findItem(), ReadStatus::itemRead);
  Item item;
  page.decode(item);
  return item;
}

/// Walks to the end or to what stops the walk.
PageWalker walked(std::string_view file, ReadStatus& last) {
  PageWalker page(file);
  do {
    last = page.findItem();
  } while (last == ReadStatus::itemRead);
  return page;
}

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

TEST(PageHeader, TwoWordsTooSmallLetsTheTrailerBeTakenForAnItem) {
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
    EXPECT_EQ(firstItem(pageOf(plainItem(type))).par[1], type);
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
    EXPECT_EQ(item.par[1], type);
    EXPECT_EQ(item.par[4], 6) << type;
    EXPECT_EQ(item.text, "") << type;
  }
}

// --- items without text ---

TEST(PlainItem, GivesItsParametersAndZeroBeyondItsLength) {
  const Item item = firstItem(pageOf(words({12, 8, 1, 50, 4, 5, 6, 7, 8, 9, 10, 11, 12}) + words({2, 4, 1})));
  for (std::size_t p = 1; p <= 20; ++p) {
    const float inFile = p == 1 ? 8 : p == 2 ? 1 : p == 3 ? 50 : static_cast<float>(p);
    EXPECT_EQ(item.par[p], p <= 12 ? inFile : 0) << "P" << p;
  }
}

TEST(PlainItem, KeepsAllTwentyParameters) {
  const std::string file = pageOf(words({20, 4, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}));
  PageWalker page(file);
  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  Item item;
  page.decode(item);
  EXPECT_EQ(item.par[1], 4);
  for (int p = 2; p <= 20; ++p) {
    EXPECT_EQ(item.par[static_cast<std::size_t>(p)], static_cast<float>(p));
    EXPECT_EQ(page.par(p), static_cast<float>(p));
    EXPECT_EQ(page.storedPar(p), static_cast<float>(p));
  }
}

TEST(PlainItem, LeavesNothingOfTheItemDecodedBefore) {
  const std::string file = pageOf(textItem(14, 15, 12, 13, "ABCD") + words({2, 4, 1}));
  PageWalker page(file);
  Item item;
  item.par.fill(99);
  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  page.decode(item);
  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  page.decode(item);
  EXPECT_EQ(item.text, "");
  for (std::size_t p = 3; p <= 20; ++p) {
    EXPECT_EQ(item.par[p], 0) << "P" << p;
  }
}

TEST(PlainItem, WithMoreThanTwentyParametersIsToldApart) {
  for (const float length : {20.51F, 21.0F, 22.0F, 500.0F, 32767.0F}) {
    const std::string file = header(100) + words({length, 4, 1}) + zeroWords(19);
    PageWalker page(file);
    EXPECT_EQ(page.findItem(), ReadStatus::tooManyParameters) << length;
    EXPECT_EQ(page.itemsInFile(), 1);
  }
  const std::string twentyAndAHalf = header(100) + words({20.5F, 4, 1}) + zeroWords(18);
  EXPECT_EQ(firstStatus(twentyAndAHalf), ReadStatus::itemRead) << "20.5 is rounded to 20";
}

TEST(PlainItem, ThatTheFileEndsInBeforeItsTwentyFirstParameterIsAStructuralError) {
  const std::string file = header(100) + words({30, 4, 1}) + zeroWords(19);  // up to P21
  for (std::size_t size = 2; size < file.size(); ++size) {
    EXPECT_EQ(firstStatus(file.substr(0, size)), ReadStatus::structuralError) << size << " bytes";
  }
  EXPECT_EQ(firstStatus(file), ReadStatus::tooManyParameters);
}

TEST(PlainItem, ThatTheFileEndsInIsAStructuralError) {
  const std::string file = header(100) + plainItem(4);
  for (std::size_t size = 2; size < file.size(); ++size) {
    PageWalker page(std::string_view(file).substr(0, size));
    EXPECT_EQ(page.findItem(), ReadStatus::structuralError) << size << " bytes";
    EXPECT_EQ(page.itemsInFile(), 1) << size << " bytes";
  }
  EXPECT_EQ(firstStatus(file), ReadStatus::itemRead);
}

TEST(PlainItem, CarriesNaNAndTheSignOfZeroUnchanged) {
  const std::string odd = bytes("01 00 80 7F") + bytes("00 00 00 80");  // a signalling NaN, -0
  const Item item = firstItem(pageOf(words({5, 4, 1, 50}) + odd));
  EXPECT_EQ(std::bit_cast<std::uint32_t>(item.par[4]), 0x7F800001U);
  EXPECT_TRUE(std::signbit(item.par[5]));
}

// --- text items ---

TEST(TextItem, ShorterThanFourteenIsAStructuralError) {
  for (const float type : {11.0F, 15.0F, 16.0F}) {
    for (const float length : {2.0F, 13.0F, 13.25F, 13.49F}) {
      EXPECT_EQ(firstStatus(pageOf(textItem(length, type, 0, 0, "ABCDEFGH"))), ReadStatus::structuralError)
          << type << " of length " << length;
    }
    EXPECT_EQ(firstStatus(pageOf(textItem(14, type, 0, 0, "ABCD"))), ReadStatus::itemRead) << type;
    EXPECT_EQ(firstStatus(pageOf(textItem(13.51F, type, 0, 0, "ABCD"))), ReadStatus::itemRead) << type;
  }
}

TEST(TextItem, ThatTheFileEndsInIsAStructuralError) {
  for (const float type : {11.0F, 15.0F, 16.0F}) {
    const std::string file = header(100) + textItem(15, type, 0, 0, "ABCDEFGH");
    for (std::size_t size = 2; size < file.size(); ++size) {
      EXPECT_EQ(firstStatus(file.substr(0, size)), ReadStatus::structuralError) << type << ": " << size << " bytes";
    }
    EXPECT_EQ(firstStatus(file), ReadStatus::itemRead) << type;
  }
}

TEST(TextItem, LongerThanTwentyIsNoMatterOfParameters) {
  for (const float type : {11.0F, 15.0F, 16.0F}) {
    const Item item = firstItem(pageOf(textItem(25, type, 48, 0, std::string(48, 'A'))));
    EXPECT_EQ(item.text, std::string(type == 11 ? 5 : 48, 'A')) << type;
    for (std::size_t p = 14; p <= 20; ++p) {
      EXPECT_EQ(item.par[p], 0) << "P" << p << " of type " << type;
    }
  }
}

TEST(TextItem, OfType15KeepsThirteenParametersAndAllItsText) {
  const Item item = firstItem(pageOf(words({16, 15, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}) + "Allegro     "));
  for (std::size_t p = 2; p <= 13; ++p) {
    EXPECT_EQ(item.par[p], static_cast<float>(p));
  }
  EXPECT_EQ(item.text, "Allegro     ") << "trailing blanks are part of the text";
}

TEST(TextItem, OfTypes11And16KeepsTwelveParametersAndDropsWord13) {
  for (const float type : {11.0F, 16.0F}) {
    const std::string file = pageOf(words({14, type, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}) + "WXYZ" + "ABCD");
    PageWalker page(file);
    ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
    Item item;
    page.decode(item);
    for (std::size_t p = 2; p <= 12; ++p) {
      EXPECT_EQ(item.par[p], static_cast<float>(p));
    }
    EXPECT_EQ(item.par[13], 0);
    EXPECT_EQ(page.par(13), 0);
    EXPECT_EQ(item.text, "ABCD");
    EXPECT_EQ(test::words({page.storedPar(13)}), "WXYZ") << "the word itself can be looked at";
  }
}

TEST(TextItem, OfType11IsItsFirstFiveCharacters) {
  EXPECT_EQ(firstItem(pageOf(textItem(15, 11, 0, 0, "ABCDEFGH"))).text, "ABCDE");
  EXPECT_EQ(firstItem(pageOf(textItem(15, 11, 0, 0, "AB      "))).text, "AB   ");
  EXPECT_EQ(firstItem(pageOf(textItem(14, 11, 0, 0, "ABCD"))).text, "ABCD") << "there is no fifth";
  EXPECT_EQ(firstItem(pageOf(textItem(15, 11, 2, 0, "ABCDEFGH"))).text, "ABCDE") << "P12 has no say";
}

TEST(TextItem, OfType16IsItsFirstP12Characters) {
  EXPECT_EQ(firstItem(pageOf(textItem(14, 16, 3, 0, "AB  "))).text, "AB ");
  EXPECT_EQ(firstItem(pageOf(textItem(15, 16, 7, 0, "ABCDEFG "))).text, "ABCDEFG");
  const std::pair<float, const char*> counts[] = {
      {0, ""},      {1, "A"},    {4, "ABCD"}, {5, "ABCD"}, {0.5F, ""},      {0.51F, "A"},   {1.5F, "AB"},
      {2.5F, "AB"}, {-0.0F, ""}, {-0.4F, ""}, {-0.5F, ""}, {32768, "ABCD"}, {1E6F, "ABCD"}, {2147483520.0F, "ABCD"}};
  for (const auto& [count, text] : counts) {
    const Item item = firstItem(pageOf(countedText(count)));
    EXPECT_EQ(item.text, text) << count;
    EXPECT_EQ(item.par[12], count);
  }
}

TEST(TextItem, WhoseP12CanBeNoCountIsAStructuralError) {
  for (const float count : {-0.51F, -0.6F, -1.0F, -3E9F, 2147483648.0F, 3E9F, infinity, -infinity, notANumber}) {
    const std::string file = pageOf(countedText(count));
    PageWalker page(file);
    EXPECT_EQ(page.findItem(), ReadStatus::structuralError) << count;
    EXPECT_EQ(page.itemsInFile(), 1) << count;
  }
}

TEST(TextItem, OfOtherTypesMayHaveAnyP12) {
  EXPECT_EQ(firstItem(pageOf(textItem(14, 15, -1, 0, "ABCD"))).text, "ABCD");
  EXPECT_EQ(firstItem(pageOf(textItem(14, 11, notANumber, 0, "ABCD"))).text, "ABCD");
}

TEST(TextItem, KeepsItsBytesWhateverTheyAre) {
  const std::string odd = bytes("00 FF 80 0A");
  EXPECT_EQ(firstItem(pageOf(textItem(14, 15, 0, 0, odd))).text, odd);
}

TEST(TextItem, ShowsItsChunksAndOtherItemsHaveNone) {
  const std::string file = pageOf(textItem(15, 11, 0, 0, "ABCDEFGH") + plainItem(4));
  PageWalker page(file);
  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  EXPECT_TRUE(page.hasText());
  EXPECT_EQ(page.chunks(), "ABCDEFGH");
  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  EXPECT_FALSE(page.hasText());
  EXPECT_EQ(page.chunks(), "");
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

// --- passing over ---

constexpr TypeSet notesAndRests{1, 2};

/// What is left of a walk that looks at no notes and rests: status and counters of every other item, and of the end.
std::vector<std::string> walkWithoutNotesAndRests(std::string_view file, bool passingOver) {
  std::vector<std::string> steps;
  PageWalker page(file);
  for (ReadStatus status = ReadStatus::itemRead; status == ReadStatus::itemRead;) {
    if (passingOver) {
      page.passOver(notesAndRests);
    }
    status = page.findItem();
    if (status != ReadStatus::itemRead || (page.type() != 1 && page.type() != 2)) {
      steps.push_back("status " + std::to_string(static_cast<int>(status)) + " item " +
                      std::to_string(page.itemsInFile()) + " words " + std::to_string(page.wordsRead()) + " byte " +
                      std::to_string(page.position()) + " trailer " + page.trailerNumberText());
    }
  }
  return steps;
}

TEST(PassOver, StopsBeforeTheFirstItemOfAnotherType) {
  const std::string file = pageOf(plainItem(1) + plainItem(2) + words({6, 1}) + zeroWords(5) + plainItem(3));
  PageWalker page(file);
  page.passOver(notesAndRests);
  EXPECT_EQ(page.itemsInFile(), 3);
  EXPECT_EQ(page.wordsRead(), 5 + 5 + 7);
  EXPECT_EQ(page.position(), 2U + 4 * 17);
  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  EXPECT_EQ(page.type(), 3);
  EXPECT_EQ(page.itemsInFile(), 4);
}

TEST(PassOver, StopsBeforeTheTrailer) {
  const std::string file = pageOf(plainItem(1) + plainItem(1));
  PageWalker page(file);
  page.passOver(notesAndRests);
  EXPECT_EQ(page.itemsInFile(), 2);
  EXPECT_EQ(page.findItem(), ReadStatus::endOfItems);
}

TEST(PassOver, TakesATypeThatIsNotWholeForAnother) {
  const std::string file = pageOf(plainItem(1.5F) + plainItem(1));
  PageWalker page(file);
  page.passOver(notesAndRests);
  EXPECT_EQ(page.itemsInFile(), 0);
}

TEST(PassOver, ChangesNothingThatIsMetBehindItWhereverThePageIsCutOrBroken) {
  const std::string whole = pageOf(plainItem(1) + plainItem(1) + plainItem(3) + words({5, 2}) + zeroWords(4) +
                                   textItem(14, 15, 0, 0, "ABCD") + plainItem(1) + plainItem(8) + plainItem(2));
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const std::string cut = whole.substr(0, length);
    EXPECT_EQ(walkWithoutNotesAndRests(cut, true), walkWithoutNotesAndRests(cut, false)) << length << " bytes";
  }
  for (std::size_t word = 0; 4 * word + 6 <= whole.size(); ++word) {
    for (const float number : {-1.0F, 0.0F, 1.0F, 1.5F, 2.0F, 3.0F, 4.2F, 19.0F, 20.0F, 21.0F, 40000.0F, notANumber}) {
      std::string broken = whole;
      broken.replace(2 + 4 * word, 4, words({number}));
      EXPECT_EQ(walkWithoutNotesAndRests(broken, true), walkWithoutNotesAndRests(broken, false))
          << "word " << word << " is " << number;
    }
  }
  for (int count = -1; count <= 60; ++count) {
    const std::string miscounted = header(count) + whole.substr(2);
    EXPECT_EQ(walkWithoutNotesAndRests(miscounted, true), walkWithoutNotesAndRests(miscounted, false)) << count;
  }
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
}  // namespace kiv
