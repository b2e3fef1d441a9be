#include <gtest/gtest.h>

#include "apps/kivsys/output/instruments_output.h"
#include "apps/kivsys/output/text_table.h"
#include "base/csv_line.h"

namespace kiv::test {
namespace {

TEST(CsvLine, QuotesWhatWouldEndACell) {
  EXPECT_EQ(csvLine({"a", "", "b c"}), "a,,b c\n");
  EXPECT_EQ(csvLine({"a,b", "say \"a\"", "line\r\nend"}), "\"a,b\",\"say \"\"a\"\"\",\"line\r\nend\"\n");
}

TEST(CellText, IsNoFormula) {
  for (const char* formula : {"=1+1", "+1", "-1", "@SUM(A1)", "\t=1", "\r=1"}) {
    EXPECT_EQ(cellText(formula), std::string("'") + formula);
  }
  EXPECT_EQ(cellText("Flute = 1"), "Flute = 1");
  EXPECT_EQ(cellText(""), "");
}

TEST(TextTable, IsAlignedByCharacters) {
  EXPECT_EQ(tableText({{"n", "name", "last"}, {"1", "Fl\xC3\xB6te", "x"}, {"12", "Viola", ""}}, {0}),
            " n  name   last\n"
            " 1  Fl\xC3\xB6te  x\n"
            "12  Viola\n");
}

TEST(TextTable, LongTextsAreShortenedBetweenCharacters) {
  EXPECT_EQ(shortened("Fl\xC3\xB6te", 5), "Fl\xC3\xB6te");
  EXPECT_EQ(shortened("Fl\xC3\xB6te 1", 6), "Fl\xC3\xB6...");
  EXPECT_EQ(shortened("\xC3\xB6\xC3\xB6\xC3\xB6\xC3\xB6", 3), "...");
  EXPECT_EQ(shortened("abcd", 2), "abcd") << "not even the periods fit";
}

TEST(ClefWord, IsThatOfMusicians) {
  EXPECT_EQ(clefWord({0, 0}), "treble");
  EXPECT_EQ(clefWord({1, 0}), "bass");
  EXPECT_EQ(clefWord({2, 0}), "alto");
  EXPECT_EQ(clefWord({2, 2}), "tenor");
  EXPECT_EQ(clefWord({2, -4}), "alto-4");
  EXPECT_EQ(clefWord({0, 7}), "treble+7");
  EXPECT_EQ(clefWord({5, 0}), "kind 5");
  EXPECT_EQ(clefWord({5, -2}), "kind 5 -2");
}

TEST(KeyWord, HasSharpsOrFlats) {
  EXPECT_EQ(keyWord(0), "0");
  EXPECT_EQ(keyWord(2), "2#");
  EXPECT_EQ(keyWord(-3), "3b");
  EXPECT_EQ(keyWord(0.5F), "0.5");
}

TEST(NamesInWords, AreOnlyThoseThatAreKnown) {
  Instrument flute;
  flute.id = 101;
  flute.name = {"Flute", "Fl."};
  Instrument unnamed;
  unnamed.id = 102;
  Instrument viola;
  viola.id = 108;
  viola.name = {"", "Vla"};
  EXPECT_EQ(namesInWords({flute, unnamed, viola}, 2), "101 (Flute), 108 (Vla)");
  EXPECT_EQ(namesInWords({flute, unnamed, viola}, 1), "101 (Flute) and 1 more");
  EXPECT_EQ(namesInWords({unnamed}, 2), "");
}

}  // namespace
}  // namespace kiv::test
