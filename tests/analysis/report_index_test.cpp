#include "analysis/report_index.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/analysis/report_index_fixture.h"
#include "tests/platform/scripted_input.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

// --- which lines are records ---

TEST_F(ReportIndexTest, StavesAreListedUnderTheirSystemInTheOrderOfTheReport) {
  const std::string lines =
      "* KivSystem - v1.0.0.0\r\n"
      "SYSTEM=1,INSTRID=101,NEWSTAFF=3,STAVESUP=0,STAFF=4,FILE=C:\\M\\X1A.MUS\r\n"
      "SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=3,STAFF=2,FILE=C:\\M\\X1B.MUS\r\n"
      "SYSTEM=2,INSTRID=102,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\X2.MUS\r\n";
  EXPECT_EQ(staves(1, lines), (Staves{{101, 0, 4, "C:\\M\\X1A.MUS", 3}, {102, 3, 2, "C:\\M\\X1B.MUS", 1}}));
  EXPECT_EQ(staves(2, lines), (Staves{{102, 1, 1, "C:\\M\\X2.MUS", 1}}));
}

TEST_F(ReportIndexTest, StavesOfASystemNeedNotFollowEachOther) {
  const std::string lines = record("2", "7") + record("1", "9") + record("2", "8") + record("1", "6");
  EXPECT_THAT(instrumentsIn(1, lines), ElementsAre(9, 6));
  EXPECT_THAT(instrumentsIn(2, lines), ElementsAre(7, 8));
}

TEST_F(ReportIndexTest, EqualRecordsAreAStaffEach) {
  EXPECT_THAT(instrumentsIn(1, record("1", "7") + record("1", "7")), ElementsAre(7, 7));
}

TEST_F(ReportIndexTest, CommentIsIgnoredEvenWhenItContainsARecord) {
  read("*" + record("1", "5") + "* " + record("1", "6") + record("1", "7"));
  EXPECT_THAT(report.instruments, ElementsAre(7));
  EXPECT_THAT(stavesOf(report, 1), SizeIs(1));
  EXPECT_THAT(lastUses(), SizeIs(1));
}

TEST_F(ReportIndexTest, OnlyAStarAtTheStartMakesAComment) {
  const std::string lines = " *" + record("1", "5") + "SYSTEM=1,INSTRID=6*\r\n";
  EXPECT_THAT(instrumentsIn(1, lines), ElementsAre(5, 6));
  EXPECT_THAT(report.instruments, ElementsAre(5, 6));
}

TEST_F(ReportIndexTest, LineWithoutASystemIsNoRecord) {
  read("\r\n,INSTRID=1,FILE=A\r\nSYSTEM,INSTRID=2\r\nSYSTEM =1,INSTRID=3\r\nsystem=1,INSTRID=4\r\n");
  EXPECT_THAT(report.instruments, IsEmpty());
  EXPECT_THAT(report.systems, IsEmpty());
  EXPECT_THAT(lastUses(), IsEmpty());
}

TEST_F(ReportIndexTest, LineWithoutASystemMayHoldAnyIdentifier) {
  read("INSTRID=40000\r\n");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ReportIndexTest, SystemMayBeAnywhereInTheLine) {
  EXPECT_THAT(instrumentsIn(3, "page,INSTRID=5,SYSTEM=3\r\nX,INSTRID=6,SUBSYSTEM=3\r\n"), ElementsAre(5, 6));
  EXPECT_THAT(report.instruments, ElementsAre(5, 6));
}

TEST_F(ReportIndexTest, LinesEndWithEitherCharacterAndTheLastNeedsNoEnd) {
  EXPECT_THAT(instrumentsIn(1, "SYSTEM=1,INSTRID=1\nSYSTEM=1,INSTRID=2\r\rSYSTEM=1,INSTRID=3\r\nSYSTEM=1,INSTRID=4"),
              ElementsAre(1, 2, 3, 4));
}

// --- the order of the instruments ---

TEST_F(ReportIndexTest, InstrumentHasOnePlaceThatOfItsFirstMention) {
  EXPECT_THAT(orderOf(record("1", "9") + record("1", "5") + record("2", "7") + record("3", "5") + record("3", "9")),
              ElementsAre(9, 5, 7));
}

TEST_F(ReportIndexTest, InstrumentsOfSystemsThatAreNotConvertedHaveTheirPositionsToo) {
  EXPECT_THAT(orderOf(record("4", "9") + record("-1", "8") + record("x", "7") + record("99999", "6")),
              ElementsAre(9, 8, 7, 6));
}

TEST_F(ReportIndexTest, IdentifierZeroIsOneLikeOthers) {
  EXPECT_THAT(orderOf(record("1", "0") + record("1", "-0") + record("1", "") + record("1", "none")), ElementsAre(0));
}

TEST_F(ReportIndexTest, IdentifiersThatAreEqualAsWholeNumbersAreOne) {
  EXPECT_THAT(orderOf(record("1", "7") + record("1", "007") + record("1", "7.25") + record("1", " 7") +
                      record("1", "70E-1") + record("1", "8")),
              ElementsAre(7, 8));
}

TEST_F(ReportIndexTest, ReportWithoutRecordsNamesNoInstrument) {
  EXPECT_THAT(orderOf(""), IsEmpty());
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(report.systemCount(), 0);
}

TEST_F(ReportIndexTest, OrderUsesALongerKeysValueWhereTheStaffDoesNot) {
  const std::string line = "SYSTEM=1,OLDINSTRID=8,INSTRID=5\r\n";
  EXPECT_THAT(orderOf(line), ElementsAre(8));
  EXPECT_THAT(instrumentsIn(1, line), ElementsAre(5));
}

TEST_F(ReportIndexTest, IdentifierAtTheStartOfItsLineIsTheOrdersOnly) {
  const std::string line = "INSTRID=8,SYSTEM=1\r\n";
  EXPECT_THAT(orderOf(line), ElementsAre(8));
  EXPECT_THAT(instrumentsIn(1, line), ElementsAre(0));
}

// --- systems ---

TEST_F(ReportIndexTest, SystemsAreCountedUpToTheFirstGap) {
  EXPECT_EQ(systemCountOf(record("1", "5") + record("2", "5") + record("4", "5")), 2);
  EXPECT_EQ(systemCountOf(record("1", "5") + record("2", "5") + record("3", "5") + record("4", "5")), 4);
  EXPECT_EQ(systemCountOf(record("3", "5") + record("1", "5") + record("2", "5")), 3) << "in any order";
  EXPECT_EQ(systemCountOf(record("0", "5") + record("2", "5") + record("3", "5")), 0);
}

TEST_F(ReportIndexTest, SystemWithoutRecordsHasNoStaves) {
  EXPECT_THAT(staves(3, record("1", "5") + record("2", "5") + record("4", "5")), IsEmpty());
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ReportIndexTest, SystemNumberIsComparedByValue) {
  EXPECT_THAT(instrumentsIn(1, record("1", "1") + record("01", "2") + record(" 1", "3") + record("1.0", "4") +
                                   record("0.1E1", "5") + record("1x", "6") + record("+1", "7")),
              ElementsAre(1, 2, 3, 4, 5, 6, 7));
}

TEST_F(ReportIndexTest, SystemNumberIsNotRounded) {
  const std::string lines = record("0.9999999999", "1") + record("1.0000000001", "2") + record("1.5", "3") +
                            record("2.5", "4") + record("-1", "5") + record("11", "6");
  EXPECT_THAT(staves(1, lines), IsEmpty());
  EXPECT_THAT(staves(2, lines), IsEmpty());
  EXPECT_EQ(report.systemCount(), 0);
}

TEST_F(ReportIndexTest, SystemNumberMayBeOfAnySize) {
  EXPECT_EQ(systemCountOf(record("1", "5") + record("32768", "5") + record("1E99", "5") + record("-1E999", "5")), 1);
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ReportIndexTest, SystemWithoutANumberIsZeroAndNotConverted) {
  EXPECT_THAT(instrumentsIn(0, record("", "5") + record("one", "6") + record("-0", "7")), ElementsAre(5, 6, 7));
  EXPECT_EQ(report.systemCount(), 0);
}

// --- how long a page file is needed ---

TEST_F(ReportIndexTest, PageFileIsInUseUpToItsHighestSystem) {
  read(record("1", "5", "A") + record("3", "5", "A") + record("2", "5", "A") + record("2", "6", "B") +
       record("1.5", "5", "a") + "SYSTEM=4,INSTRID=5\r\n" + record("-7", "5", "C,D"));
  EXPECT_THAT(lastUses(), UnorderedElementsAre(Pair("A", 3), Pair("B", 2), Pair("a", 1.5), Pair("", 4), Pair("C", -7)));
}

TEST_F(ReportIndexTest, PageFileInUseIsTheOneThatTheStaffIsReadFrom) {
  const std::string line = "FILE=A,SYSTEM=1,OLDFILE=B,FILE=C\r\n";
  EXPECT_EQ(staves(1, line).at(0).file, "C");
  EXPECT_THAT(lastUses(), UnorderedElementsAre(Pair("C", 1)));
}

// --- the file ---

TEST_F(ReportIndexTest, ReportThatCannotBeOpenedEndsTheProgram) {
  EXPECT_EQ(endOf(host, [&] { readReport(host); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Failed to open file KivSystem2.TXT")});
}

TEST_F(ReportIndexTest, ReportIsInTheCurrentFolder) {
  host.folder = "C:\\ELSEWHERE";
  host.addFile("C:\\ELSEWHERE\\KivSystem2.TXT", record("1", "5"));
  EXPECT_THAT(readReport(host).instruments, ElementsAre(5));
}

TEST_F(ReportIndexTest, ReportIsReadOnceHoweverManySystemsItHas) {
  staves(1, record("1", "5") + record("2", "5"));
  stavesOf(report, 2);
  stavesOf(report, 3);
  EXPECT_EQ(host.timesRead("KivSystem2.TXT"), 1);
}

TEST_F(ReportIndexTest, HalfAReportIsNotConverted) {
  class FailingDisk : public FakeHost {
   public:
    std::unique_ptr<InputFile> openInput(const std::string&) override {
      return std::make_unique<ScriptedInput>(
          std::deque<ScriptedInput::Portion>{"SYSTEM=1,INSTRID=5\r\nSYSTEM=2,INS", std::nullopt});
    }
  };
  FailingDisk disk;
  EXPECT_EQ(endOf(disk, [&] { readReport(disk); }), 1);
  EXPECT_EQ(disk.messages, std::vector{critical("Run-time error: Device I/O error\r\nKivSystem2.TXT")});
}

}  // namespace
}  // namespace kiv::test
