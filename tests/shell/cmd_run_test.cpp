#include "shell/cmd_run.h"

#include <vector>

#include <gtest/gtest.h>

#include "tests/shell/analyze_fixture.h"

namespace kiv::test {
namespace {

TEST_F(Analyze, GroupOfConsistentPages) {
  addPage("X1.MUS", fluteAndBass);
  addPage("X2.MUS", fluteAndBass);
  run();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(verdict(), "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
  EXPECT_EQ(records(),
            "SYSTEM=1,INSTRID=101,NEWSTAFF=2,STAVESUP=0,STAFF=2,FILE=C:\\M\\X1.MUS\r\n"
            "SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=2,STAFF=1,FILE=C:\\M\\X1.MUS\r\n"
            "SYSTEM=2,INSTRID=101,NEWSTAFF=2,STAVESUP=0,STAFF=2,FILE=C:\\M\\X2.MUS\r\n"
            "SYSTEM=2,INSTRID=102,NEWSTAFF=1,STAVESUP=2,STAFF=1,FILE=C:\\M\\X2.MUS\r\n");
}

TEST_F(Analyze, ReportBeginsWithItsPages) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS", bass);
  run();
  EXPECT_TRUE(host.file("KivSystem2.TXT")
                  .starts_with("* KivSystem - v1.0.0.0   03-07-1994   05:08:09\r\n"
                               "* X1.MUS                    C:\\M\\\r\n"
                               "* X2.MUS                    C:\\M\\\r\n* ====="))
      << host.file("KivSystem2.TXT");
}

TEST_F(Analyze, MissingInstrumentIsInconsistent) {
  addPage("X1.MUS", fluteAndBass);
  addPage("X2.MUS", bass);
  run();
  EXPECT_EQ(verdict(), "CONSISTENCY=NO\r\nMULTIFILE=NO\r\n");
}

TEST_F(Analyze, MultifilePageIsOneSystem) {
  addPage("X1A.MUS", "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  addPage("X1B.MUS", bass);
  addPage("X2.MUS", fluteAndBass);
  run();
  EXPECT_EQ(verdict(), "CONSISTENCY=YES\r\nMULTIFILE=YES\r\n");
  EXPECT_EQ(program.pages.multifileCount, 1);
  EXPECT_TRUE(
      records().starts_with("SYSTEM=1,INSTRID=101,NEWSTAFF=2,STAVESUP=0,STAFF=1,FILE=C:\\M\\X1A.MUS\r\n"
                            "SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=2,STAFF=1,FILE=C:\\M\\X1B.MUS\r\n"));
}

TEST_F(Analyze, TwoSystemsWithTheirInstrumentsInAnotherOrderAreNoDuplicates) {
  addPage("X1.MUS",
          "staff 4 at 0 instrument 101\nstaff 3 at 0 instrument 102\nbarline 3 at 0 spans 2\n"
          "staff 2 at 0 instrument 102\nstaff 1 at 0 instrument 101\nbarline 1 at 0 spans 2\n");
  run();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(verdict(), "CONSISTENCY=NO\r\nMULTIFILE=NO\r\n");
}

TEST_F(Analyze, AllowedZeroIdentifiersStillEnterTheRecords) {
  addPage("X1.MUS", "staff 1 at 0\nbarline 1 at 0 spans 1\n");
  program.settings.allowZeroInstrId = true;
  run();
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(records(), "SYSTEM=1,INSTRID=0,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\X1.MUS\r\n");
}

TEST_F(Analyze, SystemNumbersRunOnFromPageToPage) {
  addPage("X1.MUS", "staff 2 at 0 instrument 5\nstaff 1 at 0 instrument 5\n");
  addPage("X2.MUS", "staff 1 at 0 instrument 5\n");
  run();
  EXPECT_TRUE(records().ends_with("SYSTEM=3,INSTRID=5,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\X2.MUS\r\n"));
}

TEST_F(Analyze, SecondRunStartsWithEmptyTables) {
  addPage("X1A.MUS", "staff 1 at 0 instrument 101\nclef 1 at 2 kind 1\nbarline 1 at 0 spans 1\n");
  addPage("X1B.MUS", bass);
  run();
  namesFile.clear();
  addPage("X5.MUS", bass);
  run();
  EXPECT_EQ(program.pages.pages.size(), 1U);
  EXPECT_EQ(program.firstClefs.firstClefCount(), 0U);
  EXPECT_EQ(verdict(), "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
  EXPECT_EQ(records(), "SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\X5.MUS\r\n");
}

}  // namespace
}  // namespace kiv::test
