#include "analysis/report.h"

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string separator = "* " + std::string(87, '=') + "\r\n";

class ReportTest : public ::testing::Test {
 protected:
  std::string written() const { return host.file("KivSystem2.TXT"); }

  FakeHost host;
};

TEST_F(ReportTest, HeadNamesProgramTimeAndPages) {
  Report report(host, host);
  report.writeHead("v2.3.0.14", {{{"X1.MUS", "AB", "C:\\M\\"}, {"X2.MUS", "", "C:\\M\\"}}, 1});
  EXPECT_EQ(written(),
            "* KivSystem - v2.3.0.14   03-07-1994   05:08:09\r\n"
            "* X1.MUS      AB            C:\\M\\\r\n"
            "* X2.MUS                    C:\\M\\\r\n" +
                separator);
}

TEST_F(ReportTest, TimeHasTwoDigitsEverywhere) {
  host.time = {2026, 10, 9, 10, 9, 0};
  Report(host, host).writeHead("v1", {});
  EXPECT_TRUE(written().starts_with("* KivSystem - v1   10-09-2026   10:09:00\r\n")) << written();
}

TEST_F(ReportTest, LongPageNamePushesTheOtherFields) {
  Report report(host, host);
  report.writeHead("v1", {{{"PAGESOFMUSIC001.MUS", "AB", "C:\\M\\"}}, 1});
  EXPECT_NE(written().find("* PAGESOFMUSIC001.MUS       AB            C:\\M\\\r\n"), std::string::npos);
}

TEST_F(ReportTest, OldReportIsReplaced) {
  host.addFile("KivSystem2.TXT", "old and much longer than anything that a report without pages holds");
  const Report report(host, host);
  EXPECT_EQ(written(), "");
}

TEST_F(ReportTest, FileThatCannotBeCreatedEndsTheProgram) {
  host.unwritable = {"KivSystem2.TXT"};
  EXPECT_EQ(endOf(host, [&] { const Report report(host, host); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Failed to create report file: KivSystem2.TXT")});
}

TEST_F(ReportTest, FullDiskEndsTheProgram) {
  Report report(host, host);
  host.writeFailure = "No space left on device";
  EXPECT_EQ(endOf(host, [&] { report.writeHead("v1", {}); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: No space left on device\r\nKivSystem2.TXT")});
}

TEST_F(ReportTest, PageIsListedAndRecorded) {
  ItemTable table = tableOf(host,
                            "staff 2 at 0 instrument 101 p18 1\n"
                            "barline 2 at 90 spans 1\n"
                            "rest 2 at 9 kind -2 cue 104\n"
                            "staff 1 at 0 instrument 102.5 p18 1 p19 2 p20 1\n"
                            "barline 1 at 0 spans 2 p20 1\n"
                            "barline 1 at 0 kind 8 p20 -1\n");
  table.itemText(1) = "STAFF=2,FILE=C:\\M\\X1.MUS";
  table.itemText(4) = "STAFF=1,FILE=C:\\M\\X1.MUS";
  Report report(host, host);
  report.writePage(table, TableRows(table));
  EXPECT_EQ(written(),
            "* Nr          Par1          Staff         Cue/Id        System        Staves        Bottom        "
            "Filename\r\n"
            "*  1           8             2             101           1             0             0            "
            "STAFF=2,FILE=C:\\M\\X1.MUS\r\n"
            "*  3           2             2             104 \r\n"
            "*  4           8             1             102.5         1             2             1            "
            "STAFF=1,FILE=C:\\M\\X1.MUS\r\n"
            "*  5           14            1             2                                         1 \r\n" +
                separator +
                "SYSTEM=1,INSTRID=101,NEWSTAFF=2,STAVESUP=0,STAFF=2,FILE=C:\\M\\X1.MUS\r\n"
                "SYSTEM=1,INSTRID=102.5,NEWSTAFF=1,STAVESUP=2,STAFF=1,FILE=C:\\M\\X1.MUS\r\n" +
                separator);
}

TEST_F(ReportTest, OddNumbersInRecordsAndListing) {
  ItemTable table = tableOf(host, "staff -1 at 0 instrument 1e7 p18 0x7FC00000 p19 -0 p20 0x7F800000\n");
  table.itemText(1) = "STAFF=-1,FILE=X";
  Report report(host, host);
  report.writePage(table, TableRows(table));
  EXPECT_NE(written().find("*  1           8            -1             1E+07         NAN           0             INF"
                           "          STAFF=-1,FILE=X\r\n"),
            std::string::npos)
      << written();
  EXPECT_NE(written().find("\r\nSYSTEM=NAN,INSTRID=1E+07,NEWSTAFF=-1,STAVESUP=0,STAFF=-1,FILE=X\r\n"),
            std::string::npos);
}

TEST_F(ReportTest, OnlyLeftBarlinesAreListed) {
  Report report(host, host);
  const ItemTable table = tableOf(host, "barline 1 at 0 p20 2\nbarline 1 at 0 p20 0x7FC00000\nbarline 1 at 0 p20 1\n");
  report.writePage(table, TableRows(table));
  EXPECT_EQ(written().find("*  1 "), std::string::npos);
  EXPECT_EQ(written().find("*  2 "), std::string::npos);
  EXPECT_NE(written().find("*  3           14 "), std::string::npos) << written();
}

TEST_F(ReportTest, FinishedPagesAreOnTheDiskBeforeTheReportIs) {
  Report report(host, host);
  const ItemTable table = tableOf(host, "staff 1 at 0\n");
  report.writePage(table, TableRows(table));
  EXPECT_TRUE(written().ends_with(separator));
}

}  // namespace
}  // namespace kiv::test
