#include "base/csv.h"

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using Cells = std::vector<std::string>;

std::vector<Cells> cellsOf(const std::string& text) {
  std::vector<Cells> rows;
  CsvReader reader(text);
  while (auto record = reader.next()) {
    rows.push_back(std::move(record->cells));
  }
  EXPECT_FALSE(reader.error());
  return rows;
}

TEST(Csv, RowsEndWithAnyLineEnd) {
  for (const std::string end : {"\r\n", "\n", "\r"}) {
    EXPECT_EQ(cellsOf("a,b" + end + "1,2" + end + "3,4"), (std::vector<Cells>{{"a", "b"}, {"1", "2"}, {"3", "4"}}));
  }
}

TEST(Csv, QuotedCellsHoldSeparatorsQuotesAndLineEnds) {
  EXPECT_EQ(cellsOf("\"a,b\",\"say \"\"x\"\"\",\"two\r\nlines\"\nc,\"\",\"\"\"\"\n"),
            (std::vector<Cells>{{"a,b", "say \"x\"", "two\r\nlines"}, {"c", "", "\""}}));
}

TEST(Csv, SemicolonsSeparateOnlyWithoutACommaInTheFirstLine) {
  EXPECT_EQ(cellsOf("a;b\n1,5;2\n"), (std::vector<Cells>{{"a", "b"}, {"1,5", "2"}}));
  EXPECT_EQ(cellsOf("a;b,c\n"), (std::vector<Cells>{{"a;b", "c"}}));
  EXPECT_EQ(cellsOf("\"a;a\",b\n"), (std::vector<Cells>{{"a;a", "b"}}));
  EXPECT_EQ(cellsOf("\"a,b\";c\n"), (std::vector<Cells>{{"a,b", "c"}}));
  EXPECT_EQ(cellsOf("a\n1;2\n"), (std::vector<Cells>{{"a"}, {"1;2"}}));
}

TEST(Csv, AByteOrderMarkAndTheSeparatorOfASpreadsheetAreAccepted) {
  EXPECT_EQ(cellsOf("\xEF\xBB\xBF"
                    "a,b\n"),
            (std::vector<Cells>{{"a", "b"}}));
  EXPECT_EQ(cellsOf("sep=;\r\na;b\r\n"), (std::vector<Cells>{{"a", "b"}}));
}

TEST(Csv, LinesAreCountedThroughQuotedLineEndsAndEmptyLines) {
  CsvReader reader("a,b\r\n\"1\r\n2\n3\",x\n\n , \nlast");
  EXPECT_EQ(reader.next(), (CsvRecord{1, {"a", "b"}}));
  EXPECT_EQ(reader.next(), (CsvRecord{2, {"1\r\n2\n3", "x"}}));
  EXPECT_EQ(reader.next(), (CsvRecord{7, {"last"}}));
  EXPECT_EQ(reader.next(), std::nullopt);
  EXPECT_FALSE(reader.error());
}

TEST(Csv, AnApostropheBeforeAFormulaIsRemoved) {
  EXPECT_EQ(cellsOf("'=a,'+1,'-1,'@x,'a,','=,''=b\n"),
            (std::vector<Cells>{{"=a", "+1", "-1", "@x", "'a", "'", "=", "'=b"}}));
}

/// The error of a text whose first line is right.
CsvError errorAfterTheHead(const std::string& text) {
  CsvReader reader(text);
  EXPECT_EQ(reader.next(), (CsvRecord{1, {"a", "b"}}));
  EXPECT_EQ(reader.next(), std::nullopt);
  return reader.error().value_or(CsvError());
}

TEST(Csv, WhatIsWrongIsReportedWithItsLine) {
  EXPECT_EQ(errorAfterTheHead("a,b\n1,\"x\ny\n"), (CsvError{2, "a quote is not closed"}));
  EXPECT_EQ(errorAfterTheHead("a,b\n\n1,\"x\"y\n"), (CsvError{3, "text follows a closing quote"}));
  EXPECT_EQ(errorAfterTheHead("a,b\n" + std::string(300, ',')), (CsvError{2, "the line has more than 200 cells"}));
}

TEST(Csv, AnEmptyTextHasNoRows) {
  EXPECT_EQ(cellsOf(""), std::vector<Cells>{});
  EXPECT_EQ(cellsOf("\n\r\n"), std::vector<Cells>{});
  EXPECT_EQ(cellsOf("\xEF\xBB\xBF"), std::vector<Cells>{});
}

}  // namespace
}  // namespace kiv::test
