#include "repair/corrections.h"

#include <gtest/gtest.h>

namespace kiv::repair {

void PrintTo(const CorrectionError& error, std::ostream* out) {
  *out << error.line << ": " << error.reason;
}

namespace {

using Errors = std::vector<CorrectionError>;

const std::string head = "file,system,staff,item,what,problem,old_id,new_id,confidence,reason\n";

TEST(ReadCorrections, ARowIsACorrection) {
  const Corrections table = readCorrections(head + "X1.MUS,1,3,14,staff,zero,0,110,sure,\"between 1, and 2\"\n" +
                                            "X2.MUS,2,1,9,cue,undefined,66,6,likely,x\n");
  EXPECT_EQ(table.errors, Errors{});
  EXPECT_EQ(table.rows, (std::vector<Correction>{{2, "X1.MUS", false, 3, 14, 0.0F, 110, "sure"},
                                                 {3, "X2.MUS", true, 1, 9, 66.0F, 6, "likely"}}));
}

TEST(ReadCorrections, ColumnsAreFoundByName) {
  const Corrections table = readCorrections("new_id; note ;staff;file\n7;mine;2;X1.MUS\n");
  EXPECT_EQ(table.errors, Errors{});
  EXPECT_EQ(table.rows, (std::vector<Correction>{{2, "X1.MUS", false, 2, 0, std::nullopt, 7, ""}}));
}

TEST(ReadCorrections, ARowWithoutANewIdIsLeftOut) {
  const Corrections table = readCorrections(head + "X1.MUS,1,3,14,staff,zero,0,,guess,\n");
  EXPECT_EQ(table.undecided, 1U);
  EXPECT_EQ(table.rows.size() + table.errors.size(), 0U);
}

TEST(ReadCorrections, ARowThatEndsBeforeTheNewIdIsWrong) {
  const Corrections table = readCorrections("file;staff;new_id;reason\nX1.MUS,2,7,\nX1.MUS;2\nX1.MUS;2;7\nX1.MUS;3;\n");
  EXPECT_EQ(table.errors, (Errors{{2, "has no cell for new_id; is it separated as the first row is?"},
                                  {3, "has no cell for new_id; is it separated as the first row is?"}}));
  EXPECT_EQ(table.rows, (std::vector<Correction>{{4, "X1.MUS", false, 2, 0, std::nullopt, 7, ""}}));
  EXPECT_EQ(table.undecided, 1U);
}

TEST(ReadCorrections, EveryWrongLineIsReported) {
  const Corrections table = readCorrections(head +
                                            "X1.MUS,1,3,14,staff,zero,0,0,,\n"
                                            "X1.MUS,1,three,14,staff,zero,0,7,,\n"
                                            "X1.MUS,1,3,no,staff,zero,0,7,,\n"
                                            "X1.MUS,1,3,14,note,zero,0,7,,\n"
                                            ",1,3,14,staff,zero,0,7,,\n"
                                            "X1.MUS,1,3,,cue,zero,0,7,,\n"
                                            "X1.MUS,1,3,14,staff,zero,x,7,,\n"
                                            "X1.MUS,1,3,14,staff,zero,0,7.5,,\n"
                                            "X1.MUS,1,3,14,staff,zero,0,40000,,\n"
                                            "X1.MUS,1,3,14,staff,zero,0,7,,,more\n");
  EXPECT_EQ(table.rows.size(), 0U);
  EXPECT_EQ(table.errors, (Errors{{2, "new_id is \"0\", not an id from 1 to 32767"},
                                  {3, "staff is \"three\", not a number"},
                                  {4, "item is \"no\", not the number of an item"},
                                  {5, "what is \"note\", not staff or cue"},
                                  {6, "has no file"},
                                  {7, "a cue needs the number of its item"},
                                  {8, "old_id is \"x\", not a number"},
                                  {9, "new_id is \"7.5\", not an id from 1 to 32767"},
                                  {10, "new_id is \"40000\", not an id from 1 to 32767"},
                                  {11, "has more cells than the first row"}}));
}

TEST(ReadCorrections, TablesInUtf16OrWithTabsAreCalledSo) {
  using namespace std::string_view_literals;
  const std::string advice = "; store it as comma-separated values in UTF-8";
  EXPECT_EQ(readCorrections("\xFF\xFE"
                            "f\0i\0l\0e\0"sv)
                .errors,
            (Errors{{1, "the table is in UTF-16" + advice}}));
  EXPECT_EQ(readCorrections("file\tstaff\tnew_id\nX1.MUS\t1\t7\n").errors,
            (Errors{{1, "tabs separate the cells of the table" + advice}}));
}

TEST(ReadCorrections, OneSeparatorTooManyIsNoError) {
  const Corrections table = readCorrections("file,staff,new_id\nX1.MUS,1,7,\nX1.MUS,2,8,,\n");
  EXPECT_EQ(table.rows.size(), 1U);
  EXPECT_EQ(table.errors, (Errors{{3, "has more cells than the first row"}}));
}

TEST(ReadCorrections, HeadsAndWordsMayBeWrittenInEitherCase) {
  const Corrections table =
      readCorrections("File,STAFF,New_Id,Item,What,Old_ID,Confidence\nX1.MUS,1,7,9,Cue,66,GUESS\n");
  EXPECT_EQ(table.errors, Errors{});
  EXPECT_EQ(table.rows, (std::vector<Correction>{{2, "X1.MUS", true, 1, 9, 66.0F, 7, "guess"}}));
}

TEST(ReadCorrections, AConfidenceThatIsNoneAndAColumnThatOccursTwiceAreErrors) {
  const std::string start = "file,staff,new_id,confidence\nX1.MUS,1,7,";
  for (const std::string word : {"unsure", "maybe", "very unlikely", "'guess"}) {
    EXPECT_EQ(readCorrections(start + word + "\n").errors,
              (Errors{{2, "confidence is \"" + word + "\", not sure, likely or guess"}}));
  }
  EXPECT_EQ(readCorrections("file,staff,new_id,Staff\nX1.MUS,1,7,2\n").errors, (Errors{{1, "has two columns staff"}}));
}

TEST(ReadCorrections, ATableIsReadAsFarAsAnyCanBe) {
  std::string rows = "file,staff,new_id\n";
  std::string wrong = rows;
  for (int row = 0; row < 250001; ++row) {
    rows += "X,1,7\n";
    wrong += "X,1,x\n";
  }
  const Corrections full = readCorrections(rows);
  EXPECT_EQ(full.rows.size(), 250000U);
  EXPECT_EQ(full.errors, (Errors{{250002, "has more than 250000 rows before it; the rest is not read"}}));
  const Corrections refused = readCorrections(wrong);
  EXPECT_EQ(refused.errors.size(), 1001U);
  EXPECT_EQ(refused.errors.back(), (CorrectionError{1002, "has too many errors before it; the rest is not read"}));
}

TEST(ReadCorrections, ATableWithoutItsColumnsIsNone) {
  EXPECT_EQ(readCorrections("").errors, (Errors{{1, "has no rows"}}));
  EXPECT_EQ(readCorrections("file,id\nX1.MUS,3\n").errors,
            (Errors{{1, "has no column staff"}, {1, "has no column new_id"}}));
  EXPECT_EQ(readCorrections("file,staff,new_id\nX1.MUS,\"3,7\n").errors, (Errors{{2, "a quote is not closed"}}));
}

}  // namespace
}  // namespace kiv::repair
