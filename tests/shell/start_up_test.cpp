#include "shell/start_up.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;

class StartUp : public ::testing::Test {
 protected:
  void SetUp() override {
    host.addFile("C:\\M\\X1.MUS", page("staff 1 at 0 instrument 101\n"));
    host.addFile("C:\\W\\N.TXT", "C:\\M\\X1.MUS 1\r\n");
  }
  void start(const std::string& commandLine) {
    end = endOf(host, [&] { Form_Load(program, commandLine); });
  }

  FakeHost host;
  KivSystem program{host};
  std::optional<int> end;
};

TEST_F(StartUp, EmptyCommandLineIsRefused) {
  start("");
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Invalid call to KivSystem:\r\n")});
}

TEST_F(StartUp, OtherCommandLinesAreRefusedAndShown) {
  for (const std::string line : {"CALLEDBY=KIV,FUNCTION=MAIN ", "calledby=kiv,function=main", "CALLEDBY=KIV",
                                 "FUNCTION=ANALYZE,NAMES=C:\\W\\N.TXT", ",function=analyze,names=C:\\W\\N.TXT"}) {
    host.messages.clear();
    start(line);
    EXPECT_EQ(end, 1);
    EXPECT_EQ(host.messages, std::vector{critical("Invalid call to KivSystem:\r\n" + line)});
  }
}

TEST_F(StartUp, AnalysisModeReadsTheNamesFileFromTheCommandLine) {
  start("CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=C:\\W\\N.TXT");
  EXPECT_EQ(end, 0);
  EXPECT_EQ(program.settings.namesFile, "C:\\W\\N.TXT");
  EXPECT_FALSE(program.settings.allowZeroInstrId);
  EXPECT_EQ(host.file("KivSystem1.TXT"), "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
  EXPECT_TRUE(host.messages.empty()) << "no closing message";
}

TEST_F(StartUp, NamesFileEndsAtTheCommaAndZeroIdentifiersMayBeAllowed) {
  start("CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=C:\\W\\N.TXT,ALLOWZEROID=YES");
  EXPECT_EQ(program.settings.namesFile, "C:\\W\\N.TXT");
  EXPECT_TRUE(program.settings.allowZeroInstrId);
  EXPECT_EQ(end, 0);
}

TEST_F(StartUp, AllowanceMayBeAnywhere) {
  start("X,ALLOWZEROID=YES,FUNCTION=ANALYZE,NAMES=C:\\W\\N.TXT");
  EXPECT_TRUE(program.settings.allowZeroInstrId);
  EXPECT_EQ(end, 0);
}

TEST_F(StartUp, FirstNamesKeywordCounts) {
  start("NAMES=C:\\W\\N.TXT,FUNCTION=ANALYZE,NAMES=C:\\OTHER.TXT");
  EXPECT_EQ(program.settings.namesFile, "C:\\W\\N.TXT");
}

TEST_F(StartUp, EmptyNamesFileIsReportedAsAnEmptySelection) {
  start("X,FUNCTION=ANALYZE,NAMES=");
  EXPECT_EQ(program.settings.namesFile, "");
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("No input files: ")});
}

TEST_F(StartUp, OldResultsAreDeletedVerdictFirst) {
  host.addFile("KivSystem1.TXT", "old verdict");
  host.addFile("KivSystem2.TXT", "old report");
  start("CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=C:\\NONE.TXT");
  EXPECT_EQ(end, 1);
  EXPECT_FALSE(host.hasFile("KivSystem1.TXT"));
  EXPECT_FALSE(host.hasFile("KivSystem2.TXT"));
  const auto first = std::find(host.calls.begin(), host.calls.end(), "delete KivSystem1.TXT");
  ASSERT_GE(host.calls.end() - first, 2);
  EXPECT_EQ(first[1], "delete KivSystem2.TXT");
}

TEST_F(StartUp, OldResultsThatCannotBeDeletedAreNoReasonToStop) {
  for (const std::string name : {"KivSystem1.TXT", "KivSystem2.TXT"}) {
    host.messages.clear();
    host.addFile(name, "old");
    host.unwritable = {name};
    start("");
    EXPECT_EQ(host.messages, std::vector{critical("Invalid call to KivSystem:\r\n")});
    EXPECT_EQ(host.file(name), "old");
  }
}

TEST_F(StartUp, AnalysisModeSetsUpNothingOfThePanel) {
  host.addFile("C:\\KIV\\KIVPROJ.PRO", "MusDirectory=D:\\MUSIC\r\nNamesFile=C:\\OTHER.TXT\r\n");
  start("CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=C:\\W\\N.TXT");
  EXPECT_EQ(end, 0);
  const Settings& settings = program.settings;
  EXPECT_EQ(settings.currentFolder, "");
  EXPECT_EQ(settings.projectFile, "");
  EXPECT_EQ(settings.musFolder, "");
  EXPECT_EQ(settings.namesExe, "");
  EXPECT_EQ(settings.oleExe, "");
  EXPECT_EQ(settings.fileType, "");
  EXPECT_EQ(settings.namesFile, "C:\\W\\N.TXT");
  EXPECT_EQ(host.timesRead("C:\\KIV\\KIVPROJ.PRO"), 0);
}

TEST_F(StartUp, ACallRefusedBeforeTheStartDeletesThemToo) {
  host.addFile("KivSystem1.TXT", "old");
  host.addFile("KivSystem2.TXT", "old");
  EXPECT_EQ(endOf(host, [&] { refuseCall(program, "NONE"); }), 1);
  EXPECT_FALSE(host.hasFile("KivSystem1.TXT"));
  EXPECT_FALSE(host.hasFile("KivSystem2.TXT"));
  EXPECT_EQ(host.messages, std::vector{critical("Invalid call to KivSystem:\r\nNONE")});
}

TEST_F(StartUp, ARefusedStartDeletesThemToo) {
  host.addFile("KivSystem2.TXT", "old report");
  start("");
  EXPECT_FALSE(host.hasFile("KivSystem2.TXT"));
}

/// An analysis of which only the systems are asked for.
class StartUpWithoutReport : public StartUp {
 protected:
  void analyzePage(const std::string& text) {
    host.addFile("C:\\M\\X2.MUS", page(text));
    host.addFile("C:\\W\\N.TXT", "C:\\M\\X1.MUS 1\r\nC:\\M\\X2.MUS 1\r\n");
    end = endOf(host, [&] { analyzeWithoutReport(program, "C:\\W\\N.TXT", false, nullptr); });
  }
};

TEST_F(StartUpWithoutReport, OldResultsAreDeletedAndNoneIsWritten) {
  host.addFile("KivSystem1.TXT", "old verdict");
  host.addFile("KivSystem2.TXT", "old report");
  analyzePage("staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_FALSE(host.hasFile("KivSystem1.TXT"));
  EXPECT_FALSE(host.hasFile("KivSystem2.TXT"));
  ASSERT_EQ(program.systems.systems.size(), 2U);
  EXPECT_THAT(program.systems.lists.elements(program.systems.systems[1].systemInstrList), ElementsAre(101, 102));
  EXPECT_EQ(program.systems.instrumentCount, 2U);
}

TEST_F(StartUpWithoutReport, ARecordThatDoesNotFitEndsTheProgramAfterTheLastPage) {
  host.addFile("C:\\M\\X1.MUS", page("staff 1 at 0 instrument 40000\n"));
  analyzePage("staff 1 at 0 instrument 101\n");
  EXPECT_EQ(end, 1);
  EXPECT_EQ(
      host.messages,
      std::vector{critical(
          "Run-time error: Overflow\r\nSYSTEM=1,INSTRID=40000,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\X1.MUS")});
  EXPECT_EQ(host.progress.back(), "2/2 pages");
}

TEST_F(StartUp, AnalysisModeWinsOverTheDevelopersMarker) {
  host.addFile("KIVXREF5.ASM", "");
  start("CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=C:\\W\\N.TXT");
  EXPECT_EQ(end, 0);
  EXPECT_EQ(host.timesRead("KIVXREF5.ASM"), 0);
}

TEST_F(StartUp, BadNamesFileIsShownAndDeletedInAnalysisModeToo) {
  host.addFile("C:\\W\\N.TXT", "X1.MUS 1\r\n");
  start("CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=C:\\W\\N.TXT");
  EXPECT_EQ(end, 1);
  EXPECT_EQ(
      host.messages,
      (std::vector{information("Invalid record format in Names file.\r\nName must have a path prefix:\r\nX1.MUS\r\n"
                               "Names file will be deleted after view."),
                   critical("No input files: C:\\W\\N.TXT")}));
  EXPECT_NE(std::find(host.calls.begin(), host.calls.end(), "run Notepad C:\\W\\N.TXT"), host.calls.end());
  EXPECT_FALSE(host.hasFile("C:\\W\\N.TXT"));
}

TEST_F(StartUp, ProfileIsReadForTheSystemsName) {
  host.profile["OS"] = "XP";
  start("");
  EXPECT_EQ(program.settings.osName, "XP");
}

TEST(VersionText, ThirdNumberIsAlwaysZero) {
  EXPECT_EQ(versionText(2, 3, 14), "v2.3.0.14");
}

}  // namespace
}  // namespace kiv::test
