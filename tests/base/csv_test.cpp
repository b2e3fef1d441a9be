#include "base/csv.h"

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using Cells = std::vector<std::string>;

std::vector<Cells> cellsOf(const std::string& text) {
  std::vector<Cells> rows;
  for (const CsvRow& row : readCsv(text).rows) {
    rows.push_back(row.cells);
  }
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

TEST(Csv, SemicolonsAndTabsSeparateWhenTheFirstRowHasThem) {
  EXPECT_EQ(cellsOf("a;b\n1,5;2\n"), (std::vector<Cells>{{"a", "b"}, {"1,5", "2"}}));
  EXPECT_EQ(cellsOf("a\tb\n1\t2\n"), (std::vector<Cells>{{"a", "b"}, {"1", "2"}}));
  EXPECT_EQ(cellsOf("\"a;a\",b\n"), (std::vector<Cells>{{"a;a", "b"}}));
}

TEST(Csv, AByteOrderMarkAndTheSeparatorOfASpreadsheetAreAccepted) {
  EXPECT_EQ(cellsOf("\xEF\xBB\xBF"
                    "a,b\n"),
            (std::vector<Cells>{{"a", "b"}}));
  EXPECT_EQ(cellsOf("sep=;\r\na;b\r\n"), (std::vector<Cells>{{"a", "b"}}));
}

TEST(Csv, LinesAreCountedThroughQuotedLineEndsAndEmptyLines) {
  const CsvText csv = readCsv("a\n\"x\r\ny\nz\"\n\n\nb\n");
  ASSERT_EQ(csv.rows.size(), 3U);
  EXPECT_EQ(csv.rows[0].line, 1U);
  EXPECT_EQ(csv.rows[1].line, 2U);
  EXPECT_EQ(csv.rows[2].line, 7U);
}

TEST(Csv, AnApostropheBeforeAFormulaIsRemoved) {
  EXPECT_EQ(cellsOf("'=a,'+1,'-1,'@x,'a,','=,''=b\n"),
            (std::vector<Cells>{{"=a", "+1", "-1", "@x", "'a", "'", "=", "'=b"}}));
}

TEST(Csv, AQuotationMarkThatNothingClosesIsReportedWithItsLine) {
  const CsvText csv = readCsv("a,b\n1,\"x\ny\n");
  EXPECT_EQ(csv.openQuote, 2U);
  EXPECT_EQ(csv.rows, (std::vector<CsvRow>{{1, {"a", "b"}}}));
}

TEST(Csv, AnEmptyTextHasNoRows) {
  EXPECT_EQ(cellsOf(""), std::vector<Cells>{});
  EXPECT_EQ(cellsOf("\n\r\n"), std::vector<Cells>{});
  EXPECT_EQ(cellsOf("\xEF\xBB\xBF"), std::vector<Cells>{});
}

}  // namespace
}  // namespace kiv::test
