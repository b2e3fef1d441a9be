#include "shell/cmd_run.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string interactive = "CALLEDBY=KIV,FUNCTION=MAIN";

/// A press on Analyze, or a sibling's call, over pages in C:\M.
class Analyze : public ::testing::Test {
 protected:
  void addPage(const std::string& file, std::string_view text) {
    host.addFile("C:\\M\\" + file, page(text));
    namesFile += "C:\\M\\" + file + " 1\r\n";
  }
  void run(const std::string& commandLine = "") {
    host.addFile("C:\\N.TXT", namesFile);
    program.settings.commandLine = commandLine;
    program.settings.namesFile = "C:\\N.TXT";
    program.settings.versionText = "v1.0.0.0";
    end = endOf([&] { cmdRun_Click(program); });
  }
  std::string verdict() const { return host.file("KivSystem1.TXT"); }
  /// The records of the report, without its comment lines.
  std::string records() const {
    std::string kept;
    const std::string report = host.file("KivSystem2.TXT");
    for (std::size_t at = 0; at < report.size();) {
      const std::size_t next = report.find('\n', at) + 1;
      kept += report[at] == '*' ? "" : report.substr(at, next - at);
      at = next;
    }
    return kept;
  }
  bool called(const std::string& call) const {
    return std::find(host.calls.begin(), host.calls.end(), call) != host.calls.end();
  }

  FakeHost host;
  KivSystem program{host};
  std::string namesFile;
  std::optional<int> end;

  const std::string fluteAndBass = "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n";
  const std::string bass = "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n";
};

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

TEST_F(Analyze, ZeroIdentifiersAreReported) {
  addPage("X1.MUS", "staff 1 at 0\n");
  run();
  EXPECT_EQ(host.messages,
            std::vector{information("Zero instrId(s) in file: C:\\M\\X1.MUS\r\n\r\nResults are unpredictable.")});
}

TEST_F(Analyze, ReservedNameInFirstPlaceIsRefused) {
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

TEST_F(Analyze, ReservedNameInSecondPlaceIsNot) {
  addPage("X2.MUS", bass);
  addPage("WORK0001.MUS", bass);
  run();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Analyze, FirstResultFileLiesInTheFolderOfTheInput) {
  addPage("X1.MUS", bass);
  run();
  EXPECT_EQ(program.panel.txtFirstResultFile.text, "C:\\M\\WORK0001.MUS");
  EXPECT_EQ(program.panel.txtFirstResultFileTag, "C:\\M\\");
}

TEST_F(Analyze, WaitLabelAndHourglassFrameTheReading) {
  addPage("X1.MUS", "staff 1 at 0\n");
  host.whileShown = [this](const Message&) {
    EXPECT_TRUE(program.panel.lblWait.visible);
    EXPECT_EQ(program.panel.lblWait.text, "Wait for analysis to finish");
  };
  run();
  EXPECT_EQ(host.messages.size(), 1U);
  EXPECT_FALSE(program.panel.lblWait.visible);
  ASSERT_FALSE(host.calls.empty());
  EXPECT_EQ(host.calls.front(), "pointer hourglass");
  EXPECT_EQ(host.calls.back(), "pointer normal");
}

/// A host that records when texts are opened and closed, each with what the wait label shows then.
class AttentiveHost : public FakeHost {
 public:
  const Control* label = nullptr;

  std::unique_ptr<OutputFile> openOutput(const std::string& name) override {
    record("open " + name);
    return std::make_unique<WatchedOutput>(FakeHost::openOutput(name), [this, name] { record("close " + name); });
  }
  void processEvents() override { record("events"); }
  void setPointer(Pointer pointer) override {
    record(pointer == Pointer::hourglass ? "pointer hourglass" : "pointer normal");
  }
  std::int32_t runProcess(const std::string& commandLine, ShowState /*show*/) override {
    record("run " + commandLine + (hasFile("KivSystem1.TXT") ? ", with a verdict" : ", without verdict"));
    return 0;
  }

 private:
  class WatchedOutput : public OutputFile {
   public:
    WatchedOutput(std::unique_ptr<OutputFile> file, std::function<void()> closed)
        : file_(std::move(file)), closed_(std::move(closed)) {}
    WatchedOutput(const WatchedOutput&) = delete;
    WatchedOutput& operator=(const WatchedOutput&) = delete;
    ~WatchedOutput() override { closed_(); }
    std::optional<std::string> write(std::string_view bytes) override { return file_->write(bytes); }

   private:
    std::unique_ptr<OutputFile> file_;
    std::function<void()> closed_;
  };

  void record(const std::string& call) { calls.push_back(label->visible ? call + " [" + label->text + "]" : call); }
};

TEST_F(Analyze, BeginsWithTheLabelAndEndsWithTheVerdict) {
  addPage("X1.MUS", bass);
  AttentiveHost attentive;
  KivSystem another{attentive};
  attentive.label = &another.panel.lblWait;
  attentive.addFile("C:\\M\\X1.MUS", page(bass));
  attentive.addFile("C:\\N.TXT", namesFile);
  another.settings.namesFile = "C:\\N.TXT";
  another.panel.chkDebug.checked = true;
  EXPECT_EQ(endOf([&] { cmdRun_Click(another); }), std::nullopt);
  const std::string wait = " [Wait for analysis to finish]";
  EXPECT_EQ(attentive.calls, (std::vector<std::string>{
                                 "pointer hourglass", "events" + wait, "open KivSystem2.TXT" + wait,
                                 "close KivSystem2.TXT" + wait, "run Notepad KivSystem2.TXT, without verdict" + wait,
                                 "pointer normal" + wait, "open KivSystem1.TXT", "close KivSystem1.TXT"}));
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

TEST_F(Analyze, TraceShowsTheReport) {
  addPage("X1.MUS", bass);
  program.panel.chkDebug.checked = true;
  run();
  EXPECT_TRUE(called("run Notepad KivSystem2.TXT"));
}

TEST_F(Analyze, WithoutTraceTheReportIsNotShown) {
  addPage("X1.MUS", bass);
  run();
  EXPECT_FALSE(called("run Notepad KivSystem2.TXT"));
}

TEST_F(Analyze, ProgressGoesFromNoneToAllPages) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS", bass);
  run();
  EXPECT_EQ(host.progress, (std::vector<std::string>{"0/2 pages", "1/2 pages", "2/2 pages"}));
}

TEST_F(Analyze, SystemNumbersRunOnFromPageToPage) {
  addPage("X1.MUS", "staff 2 at 0 instrument 5\nstaff 1 at 0 instrument 5\n");
  addPage("X2.MUS", "staff 1 at 0 instrument 5\n");
  run();
  EXPECT_TRUE(records().ends_with("SYSTEM=3,INSTRID=5,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\X2.MUS\r\n"));
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
  // Row 4, behind the page's three items, says system 1, and that is the staff's.
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

TEST_F(Analyze, ProblemsOfOnePageAreNotToldAgainOnTheNext) {
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

TEST_F(Analyze, LettersOutOfOrderAreWarnedAboutAndTheRunGoesOn) {
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

TEST_F(Analyze, FullDiskEndsTheRunWithTheSystemsWords) {
  addPage("X1.MUS", bass);
  host.writeFailure = "No space left on device";
  run();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: No space left on device\r\nKivSystem2.TXT")});
}

TEST_F(Analyze, EmptySelectionEndsASiblingsCall) {
  run();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("No input files: C:\\N.TXT")});
}

TEST_F(Analyze, EmptySelectionLeavesThePanelAsItWas) {
  program.panel.txtFirstResultFile.text = "D:\\OUT\\WORK0001.MUS";
  program.panel.cmdConvert.enabled = true;
  const Panel before = program.panel;
  run(interactive);
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.messages, std::vector{critical("No input files: C:\\N.TXT")});
  EXPECT_EQ(program.panel, before);
  EXPECT_EQ(host.calls.back(), "pointer normal");
}

TEST_F(Analyze, InputThatQualifiesEndsThePanelsProgram) {
  addPage("X1.MUS", bass);
  run(interactive);
  EXPECT_EQ(end, 0);
  EXPECT_EQ(host.messages,
            std::vector{information("Input qualifies for conversion to one file per system.\r\n"
                                    "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.")});
  EXPECT_FALSE(program.panel.cmdConvert.enabled);
}

TEST_F(Analyze, InputThatDoesNotQualifyEnablesConvert) {
  addPage("X1.MUS", fluteAndBass);
  addPage("X2.MUS", bass);
  run(interactive);
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.messages,
            std::vector{information("Result of the Analysis.\r\nNumber of files processed: 2\r\n"
                                    "Number of staves (instruments) per system: 2\r\n\r\n"
                                    "CONSISTENCY=NO\r\nMULTIFILE=NO\r\n\r\nInput does NOT qualify for conversion\r\n"
                                    "Use Convert button to create consistent input for KivScore2XML or KivSpli6.")});
  EXPECT_TRUE(program.panel.cmdConvert.enabled);
}

TEST_F(Analyze, ConsistentMultifilePagesNeedAConversionToo) {
  addPage("X1A.MUS", bass);
  addPage("X1B.MUS", "staff 1 at 0 instrument 103\nbarline 1 at 0\n");
  run(interactive);
  EXPECT_NE(host.messages.at(0).text.find("CONSISTENCY=YES\r\nMULTIFILE=YES"), std::string::npos);
  EXPECT_TRUE(program.panel.cmdConvert.enabled);
}

TEST_F(Analyze, ClosingMessagesBelongToThePanelOnly) {
  addPage("X1.MUS", bass);
  run("CALLEDBY=KIV,FUNCTION=MAIN,X");
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(Analyze, VerdictThatIsGoneBeforeItIsReadEndsTheProgram) {
  addPage("X1.MUS", fluteAndBass);
  // The verdict can be written but is not there when it is asked for.
  class VanishingVerdict : public FakeHost {
   public:
    std::unique_ptr<InputFile> openInput(const std::string& name) override {
      return name == "KivSystem1.TXT" ? nullptr : FakeHost::openInput(name);
    }
  };
  VanishingVerdict other;
  other.addFile("C:\\N.TXT", namesFile);
  other.addFile("C:\\M\\X1.MUS", page(fluteAndBass));
  KivSystem panel(other);
  panel.settings.commandLine = interactive;
  panel.settings.namesFile = "C:\\N.TXT";
  EXPECT_EQ(endOf([&] { cmdRun_Click(panel); }), 1);
  EXPECT_EQ(other.messages, std::vector{critical("Failed to open KivSystem1.TXT for input.")});
}

TEST_F(Analyze, SecondRunOfTheProgramStartsAfresh) {
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
