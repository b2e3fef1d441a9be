#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/shell/analyze_fixture.h"

namespace kiv::test {
namespace {

TEST_F(Analyze, ZeroIdentifiersAreReported) {
  addPage("X1.MUS", "staff 1 at 0\n");
  run();
  EXPECT_EQ(host.messages,
            std::vector{information("Zero instrId(s) in file: C:\\M\\X1.MUS\r\n\r\nResults are unpredictable.")});
}

TEST_F(Analyze, ReservedNameOfTheFirstFileIsRefused) {
  addPage("WORK0001.MUS", bass);
  addPage("X2.MUS", bass);
  run();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages,
            std::vector{critical("Input file cannot be C:\\M\\WORK0001.MUS\r\nThat name is reserved for output.\r\n"
                                 "You need to rename the group of files (using KivRenam > File) and retry.")});
}

TEST_F(Analyze, ReservedNameIsRefusedAtTheEndOfALongerOneToo) {
  addPage("FRAMEWORK0001.MUS", bass);
  run();
  EXPECT_EQ(end, 1);
}

TEST_F(Analyze, ReservedNameOfTheSecondFileIsNot) {
  addPage("X2.MUS", bass);
  addPage("WORK0001.MUS", bass);
  run();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Analyze, NamingProblemEndsTheRunBeforeTheReport) {
  addPage("PAGE 1.MUS", bass);
  run();
  EXPECT_EQ(end, 1);
  EXPECT_FALSE(host.hasFile("KivSystem2.TXT"));
}

TEST_F(Analyze, BrokenPageLeavesTheReportOfThePagesBeforeIt) {
  addPage("X1.MUS", fluteAndBass);
  addPage("X2.MUS", "words 5000\n");
  run();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(records(),
            "SYSTEM=1,INSTRID=101,NEWSTAFF=2,STAVESUP=0,STAFF=2,FILE=C:\\M\\X1.MUS\r\n"
            "SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=2,STAFF=1,FILE=C:\\M\\X1.MUS\r\n");
  EXPECT_FALSE(host.hasFile("KivSystem1.TXT"));
}

TEST_F(Analyze, ReportHasWhatIsFinishedWhileAMessageIsUp) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS", "staff 1 at 0\n");
  std::string seen;
  host.whileShown = [&](const Message&) { seen = host.file("KivSystem2.TXT"); };
  run();
  EXPECT_NE(seen.find("SYSTEM=1,INSTRID=102"), std::string::npos);
  EXPECT_EQ(seen.find("SYSTEM=2"), std::string::npos);
}

TEST_F(Analyze, CuesOfAShorterPageLookIntoTheRowThatALongerOneLeft) {
  // The long page leaves its lowest staff, of system 3, in row 3; the short page has two rows and is system 4.
  addPage("X1.MUS", "staff 3 at 0 instrument 1\nstaff 2 at 0 instrument 2\nstaff 1 at 0 instrument 3\n");
  addPage("X2.MUS", "staff 1 at 0 instrument 9\nrest 1 at 5 kind -2 cue 1\n");
  run();
  EXPECT_EQ(host.messages, std::vector{information(
                               "Reference to undefined instrId(s) in same system in file: C:\\M\\X2.MUS\r\n\r\n"
                               "Cues found for undefined instrument(s): 1 in staff 1\r\nResults are unpredictable.")});
}

TEST_F(Analyze, RowLeftByALongerPageCanDefineACue) {
  // Row 4, after the page's three items, says system 1, and that is the staff's.
  addPage("X1.MUS", "staff 1 at 0 instrument 3\nrest 1 at 5 kind -2 cue 3\nbarline 1 at 9 spans 1\n");
  program.items.itemPar(4, par::system) = 1;
  run();
  EXPECT_EQ(host.messages,
            std::vector{information("Recursive cue(s) in file: C:\\M\\X1.MUS\r\n\r\nResults are unpredictable.")});
}

TEST_F(Analyze, MultifilePageIsCalledOneInItsMessages) {
  addPage("X1A.MUS", "staff 1 at 0 instrument 5\nbarline 1 at 0 spans 1\n");
  addPage("X1B.MUS", "staff 1 at 0 instrument 5\nbarline 1 at 0 spans 1\n");
  run();
  EXPECT_EQ(host.messages,
            std::vector{information("Duplicate instrument Id in multipage files. Top file is: C:\\M\\X1A.MUS\r\n"
                                    "InstrId(s): 5\r\n\r\nResults are unpredictable.")});
}

TEST_F(Analyze, ProblemsOfOnePageAreNotReportedAgainOnTheNext) {
  addPage("X1.MUS",
          "staff 2 at 0 instrument 5\nstaff 1 at 0 instrument 5\nstaff 1 at 9\nbarline 1 at 0 spans 2\n"
          "rest 1 at 20 kind -2 cue 5\n");
  addPage("X2.MUS", bass);
  run();
  EXPECT_EQ(host.messages.size(), 4U);
  for (const Message& message : host.messages) {
    EXPECT_NE(message.text.find("C:\\M\\X1.MUS"), std::string::npos) << message.text;
  }
}

TEST_F(Analyze, LettersOutOfOrderAreWarnedAboutAndTheRunContinues) {
  addPage("X1B.MUS", bass);
  addPage("X1A.MUS", "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  run();
  EXPECT_EQ(host.messages.size(), 1U);
  EXPECT_TRUE(records().starts_with("SYSTEM=1,INSTRID=102,NEWSTAFF=2,STAVESUP=0,STAFF=1,FILE=C:\\M\\X1B.MUS\r\n"));
  EXPECT_EQ(verdict(), "CONSISTENCY=YES\r\nMULTIFILE=YES\r\n");
}

TEST_F(Analyze, ReportThatCannotBeCreatedEndsTheRun) {
  addPage("X1.MUS", bass);
  host.unwritable = {"KivSystem2.TXT"};
  run();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Failed to create report file: KivSystem2.TXT")});
  EXPECT_FALSE(host.hasFile("KivSystem1.TXT"));
}

TEST_F(Analyze, FullDiskEndsTheRunWithThePlatformsText) {
  addPage("X1.MUS", bass);
  host.writeFailure = "No space left on device";
  run();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: No space left on device\r\nKivSystem2.TXT")});
}

}  // namespace
}  // namespace kiv::test
