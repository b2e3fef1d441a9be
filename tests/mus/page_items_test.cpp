#include "tests/mus/page_items.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <string>

namespace kiv::test {
namespace {

// --- items without text ---

TEST(PlainItem, GivesItsParametersAndZeroBeyondItsLength) {
  const Item item = firstItem(pageOf(words({12, 8, 1, 50, 4, 5, 6, 7, 8, 9, 10, 11, 12}) + words({2, 4, 1})));
  for (int p = 1; p <= 20; ++p) {
    const float inFile = p == 1 ? 8 : p == 2 ? 1 : p == 3 ? 50 : static_cast<float>(p);
    EXPECT_EQ(item[p], p <= 12 ? inFile : 0) << "P" << p;
  }
}

TEST(PlainItem, KeepsAllTwentyParameters) {
  const std::string file = pageOf(words({20, 4, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}));
  PageWalker page(file);
  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  Item item;
  page.decode(item);
  EXPECT_EQ(item[1], 4);
  for (int p = 2; p <= 20; ++p) {
    EXPECT_EQ(item[p], static_cast<float>(p));
    EXPECT_EQ(page.par(p), static_cast<float>(p));
    EXPECT_EQ(page.storedPar(p), static_cast<float>(p));
  }
}

TEST(PlainItem, LeavesNothingOfTheItemDecodedBefore) {
  const std::string file = pageOf(textItem(14, 15, 12, 13, "ABCD") + words({2, 4, 1}));
  PageWalker page(file);
  Item item;
  std::ranges::fill(item.parameters(), 99.0F);
  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  page.decode(item);
  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  page.decode(item);
  EXPECT_EQ(item.text, "");
  for (int p = 3; p <= 20; ++p) {
    EXPECT_EQ(item[p], 0) << "P" << p;
  }
}

TEST(PlainItem, WithMoreThanTwentyParametersHasAStatusOfItsOwn) {
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
  EXPECT_EQ(std::bit_cast<std::uint32_t>(item[4]), 0x7F800001U);
  EXPECT_TRUE(std::signbit(item[5]));
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
    for (int p = 14; p <= 20; ++p) {
      EXPECT_EQ(item[p], 0) << "P" << p << " of type " << type;
    }
  }
}

TEST(TextItem, OfType15KeepsThirteenParametersAndAllItsText) {
  const Item item = firstItem(pageOf(words({16, 15, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}) + "Allegro     "));
  for (int p = 2; p <= 13; ++p) {
    EXPECT_EQ(item[p], static_cast<float>(p));
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
    for (int p = 2; p <= 12; ++p) {
      EXPECT_EQ(item[p], static_cast<float>(p));
    }
    EXPECT_EQ(item[13], 0);
    EXPECT_EQ(page.par(13), 0);
    EXPECT_EQ(item.text, "ABCD");
    EXPECT_EQ(test::words({page.storedPar(13)}), "WXYZ") << "the word itself can be read";
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
    EXPECT_EQ(item[12], count);
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

}  // namespace
}  // namespace kiv::test
