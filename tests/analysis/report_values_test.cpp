#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/analysis/report_index_fixture.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

TEST_F(ReportIndexTest, KeysMayBeInAnyOrder) {
  EXPECT_EQ(staves(1, "FILE=no,NEWSTAFF=6,STAFF=7,FILE=C:\\A.MUS,STAVESUP=8,INSTRID=9,SYSTEM=1\r\n"),
            (Staves{{9, 8, 7, "C:\\A.MUS", 6}}))
      << "a key at the start of the line has no comma, and is not found";
}

TEST_F(ReportIndexTest, MissingKeysAreZeroAndNoFile) {
  EXPECT_EQ(staves(1, "SYSTEM=1\r\n"), (Staves{{0, 0, 0, "", 0}}));
  EXPECT_EQ(staves(1, "SYSTEM=1,INSTRID=,STAVESUP=,STAFF=,FILE=,NEWSTAFF=\r\n"), (Staves{{0, 0, 0, "", 0}}));
}

TEST_F(ReportIndexTest, FirstOfSeveralEqualKeysCounts) {
  EXPECT_EQ(staves(1,
                   "SYSTEM=1,SYSTEM=2,INSTRID=3,INSTRID=4,STAVESUP=5,STAVESUP=6,STAFF=7,STAFF=8,FILE=A,FILE=B,"
                   "NEWSTAFF=9,NEWSTAFF=10\r\n"),
            (Staves{{3, 5, 7, "A", 9}}));
  EXPECT_THAT(report.systems, SizeIs(1));
}

TEST_F(ReportIndexTest, FileNameEndsAtACommaInsideIt) {
  EXPECT_EQ(staves(1, record("1", "7", "C:\\M\\X, Y1.MUS")).at(0).file, "C:\\M\\X");
}

TEST_F(ReportIndexTest, FileNameIsKeptAsItIs) {
  EXPECT_EQ(staves(1, record("1", "7", " c:\\m\\\xE4=1.Mus ")).at(0).file, " c:\\m\\\xE4=1.Mus ");
}

TEST_F(ReportIndexTest, NumbersAreTheLeadingOnesOfTheirTexts) {
  EXPECT_THAT(instrumentsIn(1, record("1", "  12") + record("1", "12 abc") + record("1", "abc12") + record("1", "-3x") +
                                   record("1", "1.2E2Z") + record("1", "+4")),
              ElementsAre(12, 12, 0, -3, 120, 4));
}

TEST_F(ReportIndexTest, FractionsAreRoundedHalvesToEven) {
  EXPECT_EQ(staves(1, "SYSTEM=1,INSTRID=2.5,STAVESUP=3.5,STAFF=-0.5,FILE=A,NEWSTAFF=1.5\r\n"),
            (Staves{{2, 4, 0, "A", 2}}));
  EXPECT_EQ(staves(1, "SYSTEM=1,INSTRID=2.51,STAVESUP=3.49,STAFF=-1.5,FILE=A,NEWSTAFF=0.5\r\n"),
            (Staves{{3, 3, -2, "A", 0}}));
  EXPECT_THAT(report.instruments, ElementsAre(3));
}

TEST_F(ReportIndexTest, NumbersAreNotCutToSinglesBeforeTheyAreRounded) {
  EXPECT_THAT(instrumentsIn(1, record("1", "2.5000000001") + record("1", "3.4999999999") + record("1", "32767.4999")),
              ElementsAre(3, 3, 32767));
}

TEST_F(ReportIndexTest, NumbersUpToTheLimitsOf16BitsAreAccepted) {
  EXPECT_EQ(staves(1, "SYSTEM=1,INSTRID=32767.4,STAVESUP=-32768,STAFF=-32768.5,FILE=A,NEWSTAFF=32767\r\n"),
            (Staves{{32767, -32768, -32768, "A", 32767}}));
}

TEST_F(ReportIndexTest, IdentifierBeyond16BitsIsARunTimeErrorAtOnce) {
  for (const char* identifier : {"32768", "32767.5", "-32768.6", "-32769", "1E99", "1E999", "-1E999"}) {
    read(record("1", "5") + "SYSTEM=9,INSTRID=" + identifier + ",STAFF=1\r\n" + record("2", "6"));
    expectOverflow("SYSTEM=9,INSTRID=" + std::string(identifier) + ",STAFF=1");
  }
}

TEST_F(ReportIndexTest, OtherNumbersBeyond16BitsAreErrorsOfTheirSystemOnly) {
  for (const char* key : {",INSTRID=", ",STAVESUP=", ",STAFF=", ",NEWSTAFF="}) {
    for (const char* number : {"32768", "32767.5", "-32769", "1E9"}) {
      const std::string line = "SYSTEM=2,OLDINSTRID=5" + std::string(key) + number + ",FILE=A";
      EXPECT_THAT(instrumentsIn(1, record("1", "5") + line + "\r\n"), ElementsAre(5));
      EXPECT_EQ(end, std::nullopt);
      end = endOf(host, [&] { stavesOf(report, 2); });
      expectOverflow(line);
    }
  }
}

}  // namespace
}  // namespace kiv::test
