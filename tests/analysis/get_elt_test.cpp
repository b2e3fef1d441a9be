#include <gtest/gtest.h>

#include "analysis/report.h"

namespace kiv {
namespace {

constexpr std::string_view record = "SYSTEM=3,INSTRID=7,NEWSTAFF=5,STAVESUP=0,STAFF=2,FILE=A.MUS";

TEST(GetElt, KeyWithoutCommaMatchesInsideALongerOne) {
  EXPECT_EQ(getElt(record, "STAFF"), "5");
}

TEST(GetElt, KeyWithLeadingCommaIsTheWholeKey) {
  EXPECT_EQ(getElt(record, ",STAFF"), "2");
}

TEST(GetElt, EveryKeyOfARecord) {
  EXPECT_EQ(getElt(record, "SYSTEM"), "3");
  EXPECT_EQ(getElt(record, ",INSTRID"), "7");
  EXPECT_EQ(getElt(record, ",NEWSTAFF"), "5");
  EXPECT_EQ(getElt(record, ",STAVESUP"), "0");
  EXPECT_EQ(getElt(record, ",FILE"), "A.MUS");
}

TEST(GetElt, MissingKeyIsEmpty) {
  EXPECT_EQ(getElt(record, ",SYSTEM"), "");
  EXPECT_EQ(getElt(record, "PAGE"), "");
  EXPECT_EQ(getElt("", "SYSTEM"), "");
}

TEST(GetElt, FileNameEndsAtACommaInsideIt) {
  EXPECT_EQ(getElt("STAFF=2,FILE=C:\\A,B.MUS", ",FILE"), "C:\\A");
}

TEST(GetElt, KeysAreCaseSensitive) {
  EXPECT_EQ(getElt(record, "system"), "");
}

TEST(GetElt, FirstOccurrenceCounts) {
  EXPECT_EQ(getElt("SYSTEM=1,SYSTEM=2", "SYSTEM"), "1");
}

TEST(GetElt, KeyCountsWithItsEqualsSignOnly) {
  EXPECT_EQ(getElt("STAFFS=1,STAFF,STAFF=2", "STAFF"), "2");
  EXPECT_EQ(getElt("STAVES,STAFF", "STAFF"), "");
  EXPECT_EQ(getElt("AAA=1", "AA"), "1") << "its second and third sign";
}

TEST(GetElt, ValueMayBeEmpty) {
  EXPECT_EQ(getElt("SYSTEM=,INSTRID=", "SYSTEM"), "");
}

}  // namespace
}  // namespace kiv
