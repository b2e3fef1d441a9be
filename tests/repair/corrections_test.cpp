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

TEST(ReadCorrections, ATableWithoutItsColumnsIsNone) {
  EXPECT_EQ(readCorrections("").errors, (Errors{{1, "has no rows"}}));
  EXPECT_EQ(readCorrections("file,id\nX1.MUS,3\n").errors,
            (Errors{{1, "has no column staff"}, {1, "has no column new_id"}}));
  EXPECT_EQ(readCorrections("file,staff,new_id\nX1.MUS,\"3,7\n").errors, (Errors{{2, "a quote is not closed"}}));
}

}  // namespace
}  // namespace kiv::repair
