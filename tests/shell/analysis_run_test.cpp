#include "shell/analysis_run.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "shell/cmd_run.h"
#include "shell/frm_kivsystem.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string zeroIdentifier = "staff 1 at 0\nbarline 1 at 0 spans 1\n";

/// Analyses of pages in C:\M, with and without the panel.
class AnalysisRun : public ::testing::Test {
 protected:
  AnalysisRun() { program.settings.namesFile = "C:\\N.TXT"; }

  void addPage(const std::string& file, std::string_view text) {
    host.addFile("C:\\M\\" + file, page(text));
    namesFile += "C:\\M\\" + file + " 1\r\n";
    host.addFile("C:\\N.TXT", namesFile);
  }
  /// An analysis with these options; the controls of the panel are not used.
  void analyze(const AnalysisOptions& options) {
    ASSERT_TRUE(loadSelection(program));
    analyzePages(program, options);
    EXPECT_EQ(program.panel, Panel());
  }
  bool showsReport() const {
    return std::find(host.calls.begin(), host.calls.end(), "run Notepad KivSystem2.TXT") != host.calls.end();
  }
  bool hasRecord(const std::string& record) {
    return host.file("KivSystem2.TXT").find("\r\n" + record + "\r\n") != std::string::npos;
  }

  FakeHost host;
  KivSystem program{host};
  std::string namesFile;
};

// --- without the panel ---

TEST_F(AnalysisRun, WritesTheReportWithoutThePanel) {
  addPage("X1.MUS", "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n");
  analyze({});
  EXPECT_TRUE(hasRecord("SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\X1.MUS"));
  EXPECT_FALSE(host.hasFile("KivSystem1.TXT")) << "the verdict is not its task";
  EXPECT_FALSE(showsReport());
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(AnalysisRun, PagesAreReadFromTheFolderOfTheirNames) {
  addPage("X1A.MUS", "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n");
  host.addFile("X1A.MUS", page("staff 1 at 0 instrument 103\nbarline 1 at 0 spans 1\n"));
  analyze({});
  EXPECT_TRUE(hasRecord("SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\X1A.MUS"))
      << host.file("KivSystem2.TXT");
}

TEST_F(AnalysisRun, OfASelectionWritesTheVerdictAndClosesWithoutAMessage) {
  addPage("X1.MUS", "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n");
  EXPECT_EQ(endOf(host, [&] { analyzeSelection(program, {}); }), std::nullopt);
  EXPECT_EQ(host.file("KivSystem1.TXT"), "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(program.panel, Panel());
}

TEST_F(AnalysisRun, OfAnEmptySelectionEndsTheProgram) {
  EXPECT_EQ(endOf(host, [&] { analyzeSelection(program, {}); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("No input files: C:\\N.TXT")});
}

TEST_F(AnalysisRun, ZeroIdentifiersAreReportedUnlessTheyAreAllowed) {
  addPage("X1.MUS", zeroIdentifier);
  analyze({});
  EXPECT_EQ(host.messages.size(), 1U);
  analyze({.allowZeroInstrId = true});
  EXPECT_EQ(host.messages.size(), 1U);
}

TEST_F(AnalysisRun, TheReportIsShownOnRequest) {
  addPage("X1.MUS", "staff 1 at 0 instrument 102\n");
  analyze({.viewReport = true});
  EXPECT_TRUE(showsReport());
}

TEST_F(AnalysisRun, AnEmptySelectionIsNone) {
  EXPECT_FALSE(loadSelection(program));
}

TEST_F(AnalysisRun, TheFirstResultIsBesideTheFirstPage) {
  addPage("X1.MUS", "staff 1 at 0 instrument 102\n");
  ASSERT_TRUE(loadSelection(program));
  EXPECT_EQ(firstResultFile(program.host.machine, program.names), "C:\\M\\WORK0001.MUS");
  EXPECT_EQ(endOf(host, [&] { refuseReservedName(program.names); }), std::nullopt);
}

// --- the options that the handler takes from the controls ---

TEST_F(AnalysisRun, TheHandlerUsesTheFolderOfTheFirstName) {
  addPage("X1A.MUS", "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  program.panel.txtFirstResultFileTag = "C:\\OTHER\\";
  cmdRun_Click(program);
  EXPECT_TRUE(hasRecord("SYSTEM=1,INSTRID=101,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\X1A.MUS"));
}

TEST_F(AnalysisRun, TheHandlerFollowsTheBoxForZeroIdentifiers) {
  addPage("X1.MUS", zeroIdentifier);
  for (const bool allowed : {true, false}) {
    host.messages.clear();
    program.panel.chkIggZeroInstrId.checked = allowed;
    clicked(program, &Panel::chkIggZeroInstrId);
    clicked(program, &Panel::cmdRun);
    EXPECT_EQ(host.messages.empty(), allowed);
  }
}

TEST_F(AnalysisRun, TheHandlerFollowsTheTraceBox) {
  addPage("X1.MUS", "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n");
  for (const bool traced : {true, false}) {
    host.calls.clear();
    program.panel.chkDebug.checked = traced;
    clicked(program, &Panel::cmdRun);
    EXPECT_EQ(showsReport(), traced);
  }
}

}  // namespace
}  // namespace kiv::test
