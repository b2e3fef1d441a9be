#include "shell/cmd_convert.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "mus/reader.h"
#include "shell/cmd_run.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string result1 = "C:\\OUT\\WORK0001.MUS";
const std::string result2 = "C:\\OUT\\WORK0002.MUS";

/// A press on Convert over a report, with pages in C:\M and results in C:\OUT.
class Convert : public ::testing::Test {
 protected:
  void SetUp() override {
    program.panel.txtFirstResultFile.text = result1;
    host.addFile("C:\\M\\X1.MUS", page(duo));
    host.addFile("C:\\M\\X2.MUS", page(solo));
    report = record(1, 101, 2, 2, "X1.MUS") + record(1, 102, 1, 1, "X1.MUS") + record(2, 102, 1, 1, "X2.MUS");
  }
  static std::string record(int system, int instr, int newStaff, int staff, const std::string& file) {
    return "SYSTEM=" + std::to_string(system) + ",INSTRID=" + std::to_string(instr) +
           ",NEWSTAFF=" + std::to_string(newStaff) + ",STAVESUP=0,STAFF=" + std::to_string(staff) + ",FILE=C:\\M\\" +
           file + "\r\n";
  }
  void convert() {
    host.addFile("KivSystem2.TXT", report);
    end = endOf([&] { cmdConvert_Click(program); });
  }
  /// The result as page text.
  std::string result(const std::string& name) {
    ItemTable table;
    readFile(host, name, table);
    return asText(table);
  }
  void expectEnd(const std::string& text) const {
    EXPECT_EQ(end, 1);
    ASSERT_FALSE(host.messages.empty());
    EXPECT_EQ(host.messages.back(), critical(text));
  }

  FakeHost host;
  KivSystem program{host};
  std::string report;
  std::optional<int> end;
  const std::string duo =
      "staff 2 at 0 size 1 lines 5 instrument 101\ntimesignature 2 at 9 upper 3 lower 4\nnote 2 at 20 duration 3\n"
      "staff 1 at 0 size 1 lines 5 instrument 102\nnote 1 at 20 duration 3\n"
      "barline 1 at 0 spans 2\nbarline 1 at 60 spans 1\nbarline 2 at 60 spans 1\n";
  const std::string solo =
      "staff 1 at 0 size 1 lines 5 instrument 102\nnote 1 at 15 duration 3\nbarline 1 at 50 spans 1\n";
};

TEST_F(Convert, WritesOneFilePerSystemAllWithTheSameLayout) {
  convert();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(result(result1),
            "item 10 1 at -4 p5 102 p6 0.7\nstaff 1 at 0 size 1 lines 5 instrument 102\nbarline 1 at 0 spans 2\n"
            "note 1 at 20 duration 3\nbarline 1 at 60 spans 1\n"
            "item 10 2 at -4 p5 101 p6 0.7\nstaff 2 at 0 size 1 lines 5 instrument 101\n"
            "timesignature 2 at 9 upper 3 lower 4\nnote 2 at 20 duration 3\nbarline 2 at 60 spans 1\n");
  EXPECT_EQ(result(result2),
            "item 10 1 at -4 p5 102 p6 0.7\nstaff 1 at 0 size 1 lines 5 instrument 102\nbarline 1 at 0 spans 2\n"
            "note 1 at 15 duration 3\nbarline 1 at 50 spans 1\n"
            "item 10 2 at -4 p5 101 p6 0.7\nstaff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\n"
            "rest 2 at 15 kind -2 duration 3 p9 -1\nbarline 2 at 50 spans 1\n");
  EXPECT_EQ(host.messages, std::vector{information("Created 2 files.\r\nFirst is C:\\OUT\\WORK0001.MUS\r\n"
                                                   "Last is C:\\OUT\\WORK0002.MUS")});
}

TEST_F(Convert, ShowsTheWaitLabelWhileItRuns) {
  bool visible = false;
  program.panel.chkOverwrite.checked = false;
  host.addFile(result1, "old");
  host.whileShown = [&](const Message& message) {
    if (message.buttons == Buttons::yesNo) {
      visible = program.panel.lblWait.visible;
      EXPECT_EQ(program.panel.lblWait.text, "Wait for conversion to finish");
    }
  };
  convert();
  EXPECT_TRUE(visible);
  EXPECT_FALSE(program.panel.lblWait.visible);
  EXPECT_EQ(host.calls, (std::vector<std::string>{"pointer hourglass", "events", "pointer normal"}));
  EXPECT_EQ(host.progress, (std::vector<std::string>{"0/2 systems", "1/2 systems", "2/2 systems"}));
}

TEST_F(Convert, SystemsAfterAGapAreNotConverted) {
  report = record(1, 102, 1, 1, "X2.MUS") + record(2, 102, 1, 1, "X2.MUS") + record(4, 102, 1, 1, "X2.MUS");
  convert();
  EXPECT_EQ(host.messages.back().text.substr(0, 16), "Created 2 files.");
  EXPECT_FALSE(host.hasFile("C:\\OUT\\WORK0003.MUS"));
  EXPECT_FALSE(host.hasFile("C:\\OUT\\WORK0004.MUS"));
}

TEST_F(Convert, AReportWithoutRecordsGivesNoFile) {
  program.musFileName = "C:\\M\\BEFORE.MUS";
  report = "* nothing\r\n*SYSTEM=1\r\n";
  convert();
  EXPECT_EQ(host.messages, std::vector{information("Created 0 files.\r\nFirst is C:\\OUT\\WORK0001.MUS\r\n"
                                                   "Last is C:\\M\\BEFORE.MUS")});
}

TEST_F(Convert, RecordsOfASystemMayStandAnywhereInTheReport) {
  report = record(2, 102, 1, 1, "X2.MUS") + record(1, 101, 2, 2, "X1.MUS") + "* between\r\n" +
           record(1, 102, 1, 1, "X1.MUS");
  convert();
  EXPECT_EQ(host.messages.back().text.substr(0, 16), "Created 2 files.");
}

TEST_F(Convert, TheNumberOfTheResultReplacesTheLastEightCharacters) {
  program.panel.txtFirstResultFile.text = "C:\\OUT\\SYMPHONY_IX.mus";
  convert();
  EXPECT_TRUE(host.hasFile("C:\\OUT\\SYMPHON0001.MUS"));
  EXPECT_TRUE(host.hasFile("C:\\OUT\\SYMPHON0002.MUS"));
  EXPECT_EQ(host.messages.back().text,
            "Created 2 files.\r\nFirst is C:\\OUT\\SYMPHONY_IX.mus\r\n"
            "Last is C:\\OUT\\SYMPHON0002.MUS");
}

TEST_F(Convert, NamesAreTakenAsTheyAreDownToEightCharacters) {
  program.panel.txtFirstResultFile.text = "0001.MUS";
  convert();
  EXPECT_TRUE(host.hasFile("0002.MUS"));
  program.panel.txtFirstResultFile.text = "001.MUS";
  convert();
  expectEnd("Run-time error: Invalid procedure call or argument\r\n001.MUS");
}

TEST_F(Convert, InstrumentNumbersAreShownOnlyWhenWanted) {
  program.panel.chkShowInstrNumber.checked = false;
  convert();
  EXPECT_EQ(result(result1).find("item 10"), std::string::npos);
}

// --- the cost ---

TEST_F(Convert, EveryFileIsReadOnceHoweverManyStavesAndSystemsItGives) {
  report = "";
  for (int system = 1; system <= 5; ++system) {
    report += record(system, 101, 2, 2, "X1.MUS") + record(system, 102, 1, 1, "X1.MUS");
  }
  convert();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.timesRead("C:\\M\\X1.MUS"), 1);
  EXPECT_EQ(host.timesRead("KivSystem2.TXT"), 1);
}

TEST_F(Convert, AFileIsLetGoAfterItsLastSystem) {
  report = record(1, 102, 1, 1, "X2.MUS") + record(2, 102, 1, 1, "X1.MUS");
  convert();
  convert();
  EXPECT_EQ(host.timesRead("C:\\M\\X2.MUS"), 2) << "a run of its own";
}

TEST_F(Convert, AResultThatReplacesAnInputIsWhatLaterSystemsRead) {
  program.panel.txtFirstResultFile.text = "c:\\m\\x0001.MUS";
  host.addFile("C:\\M\\X0001.MUS", page(duo));
  report = record(1, 101, 2, 2, "X0001.MUS") + record(1, 102, 1, 1, "X0001.MUS") + record(2, 102, 1, 1, "X0001.MUS");
  convert();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_NE(result("C:\\M\\X0002.MUS").find("item 10 1 at -4 p5 102 p6 0.7\nitem 10 1 at -4 p5 102 p6 0.7\n"),
            std::string::npos)
      << "it shows the number that the first result shows, and its own:\n"
      << result("C:\\M\\X0002.MUS");
}

/// A disk on which one folder has two names.
class LinkedFolder : public FakeHost {
 public:
  std::unique_ptr<InputFile> openInput(const std::string& name) override { return FakeHost::openInput(own(name)); }
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override { return FakeHost::openOutput(own(name)); }
  std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) override {
    return FakeHost::replaceFile(own(name), bytes);
  }

 private:
  static std::string own(const std::string& name) {
    const std::string link = "D:\\LINK\\";
    return name.starts_with(link) ? "C:\\M\\" + name.substr(link.size()) : name;
  }
};

TEST_F(Convert, AResultThatReplacesAnInputUnderAnotherNameIsReadToo) {
  report = record(1, 101, 2, 2, "X0001.MUS") + record(1, 102, 1, 1, "X0001.MUS") + record(2, 102, 1, 1, "X0001.MUS");
  const auto resultsFrom = [this](const std::string& firstResult) {
    LinkedFolder linked;
    KivSystem another{linked};
    another.panel.txtFirstResultFile.text = firstResult;
    linked.addFile("C:\\M\\X0001.MUS", page(duo));
    linked.addFile("KivSystem2.TXT", report);
    EXPECT_EQ(endOf([&] { cmdConvert_Click(another); }), std::nullopt);
    EXPECT_EQ(linked.timesRead("C:\\M\\X0001.MUS"), 3) << "for each system, and to see whether it is there";
    return std::pair(linked.file("C:\\M\\X0001.MUS"), linked.file("C:\\M\\X0002.MUS"));
  };
  EXPECT_EQ(resultsFrom("D:\\LINK\\X0001.MUS"), resultsFrom("C:\\M\\X0001.MUS"));
}

// --- files that are there already ---

TEST_F(Convert, WithOverwriteNobodyIsAsked) {
  host.addFile(result1, "old");
  convert();
  EXPECT_EQ(host.messages.size(), 1U);
  EXPECT_NE(host.file(result1), "old");
}

TEST_F(Convert, WithoutOverwriteItAsksForEveryFileThatIsThere) {
  program.panel.chkOverwrite.checked = false;
  host.addFile(result2, "old");
  host.answers = {Answer::yes};
  convert();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.messages.front(),
            (Message{Icon::exclamation, "File exists: C:\\OUT\\WORK0002.MUS\r\n\r\nOverwrite?", Buttons::yesNo}));
  EXPECT_EQ(host.messages.size(), 2U);
  EXPECT_NE(host.file(result2), "old");
}

TEST_F(Convert, TheAnswerNoEndsTheProgramAndEarlierResultsStay) {
  program.panel.chkOverwrite.checked = false;
  host.addFile(result2, "old");
  host.answers = {Answer::no};
  convert();
  expectEnd("Abnormal termination forced by user.");
  EXPECT_TRUE(host.hasFile(result1));
  EXPECT_EQ(host.file(result2), "old");
}

// --- what ends the program ---

TEST_F(Convert, WithoutReport) {
  end = endOf([&] { cmdConvert_Click(program); });
  expectEnd("Failed to open file KivSystem2.TXT");
}

TEST_F(Convert, ADamagedPageAndEarlierResultsStay) {
  host.addFile("C:\\M\\X2.MUS", "broken");
  convert();
  EXPECT_EQ(end, 1);
  EXPECT_TRUE(host.messages.back().text.starts_with("Structural error in MUS file: C:\\M\\X2.MUS\r\n"));
  EXPECT_TRUE(host.hasFile(result1));
  EXPECT_FALSE(host.hasFile(result2));
}

TEST_F(Convert, ASystemWithoutAStaff) {
  report = record(1, 102, 1, 1, "X1.MUS") + record(2, 102, 1, 9, "X1.MUS");
  convert();
  expectEnd("No staves encountered on this page. System = 2");
  EXPECT_TRUE(host.hasFile(result1));
}

TEST_F(Convert, AResultThatCannotBeWritten) {
  host.unwritable = {result2};
  convert();
  expectEnd("Open of output MUS file failed. Hit OK to terminate.");
  EXPECT_TRUE(host.hasFile(result1));
}

TEST_F(Convert, AnItemWithoutStaffEndsTheProgramAfterTheQuestion) {
  program.panel.chkOverwrite.checked = false;
  host.addFile("C:\\M\\X1.MUS", page(duo + "note 3 at 20\n"));
  host.addFile(result1, "old");
  report = record(1, 101, 2, 2, "X1.MUS") + record(1, 102, 1, 1, "X1.MUS") + record(1, 102, 3, 3, "X1.MUS");
  convert();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(
      host.messages,
      (std::vector{Message{Icon::exclamation, "File exists: C:\\OUT\\WORK0001.MUS\r\n\r\nOverwrite?", Buttons::yesNo},
                   critical("Sort problem")}));
  EXPECT_EQ(host.file(result1), "old");
}

TEST_F(Convert, ABarWithoutABeat) {
  host.addFile("C:\\M\\X2.MUS", page("staff 1 at 0 instrument 102\nbarline 1 at 50 spans 1\nnote 1 at 999\n"));
  convert();
  expectEnd("Logical error 3 in setRestDurations");
  EXPECT_TRUE(host.hasFile(result1));
}

// --- braces, and a second run in the same program ---

TEST_F(Convert, ABraceHoldsFromItsSystemOn) {
  host.addFile("C:\\M\\X2.MUS", page(solo + "barline 1 at 7 spans 1 kind 9\n"));
  report = record(1, 102, 1, 1, "X1.MUS") + record(2, 102, 1, 1, "X2.MUS") + record(3, 102, 1, 1, "X1.MUS");
  convert();
  EXPECT_EQ(result(result1).find("kind 8"), std::string::npos);
  EXPECT_NE(result(result2).find("barline 1 at 0 spans 1 kind 8\n"), std::string::npos);
  EXPECT_NE(result("C:\\OUT\\WORK0003.MUS").find("barline 1 at 0 spans 1 kind 8\n"), std::string::npos);
}

TEST_F(Convert, BracesComeAfterEverythingThatIsSorted) {
  host.addFile("C:\\M\\X1.MUS", page(duo + "barline 2 at 7 spans 1 kind 9\n"));
  convert();
  EXPECT_TRUE(result(result1).ends_with("barline 2 at 60 spans 1\nbarline 2 at 0 spans 1 kind 8\n")) << result(result1);
}

TEST_F(Convert, ASecondConversionForgetsTheBracesAndKeepsSizesAndLines) {
  host.addFile("C:\\M\\X2.MUS", page(solo + "barline 1 at 7 spans 1 kind 9\n"));
  convert();
  host.addFile("C:\\M\\X1.MUS", page(duo));
  host.addFile("C:\\M\\X2.MUS",
               page("staff 1 at 0 size 3 lines 1 instrument 102\nnote 1 at 15\nbarline 1 at 50 spans 1\n"));
  report = record(1, 102, 1, 1, "X2.MUS") + record(2, 101, 2, 2, "X1.MUS") + record(2, 102, 1, 1, "X1.MUS");
  convert();
  EXPECT_EQ(end, std::nullopt);
  const std::string first = result(result1);
  EXPECT_EQ(first.find("kind 8"), std::string::npos);
  EXPECT_NE(first.find("staff 1 at 0 size 3 lines 1 instrument 102\n"), std::string::npos) << "a real staff";
  EXPECT_NE(first.find("staff 2 at 0 size 1 lines 5 instrument 101\n"), std::string::npos)
      << "a rest staff, by what the second place of the order held before:\n"
      << first;
}

TEST_F(Convert, TheCounterOfSystemsHas16Bits) {
  host.addFile("C:\\M\\X2.MUS", page("staff 1 at 0 instrument 102\n"));
  report = "";
  for (int system = 1; system <= 32767; ++system) {
    report += record(system, 102, 1, 1, "X2.MUS");
  }
  program.panel.chkShowInstrNumber.checked = false;
  convert();
  expectEnd("Run-time error: Overflow\r\nC:\\OUT\\WORK32767.MUS");
  EXPECT_TRUE(host.hasFile("C:\\OUT\\WORK32767.MUS"));
}

// --- the question that no analysis asks today ---

TEST_F(Convert, UnderTheUsualJudgementConvertIsOnlyEnabled) {
  offerConversion(program, "Input does NOT qualify for conversion");
  EXPECT_TRUE(program.panel.cmdConvert.enabled);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Convert, UnderAnyOtherTheAnswerYesStartsTheConversion) {
  host.addFile("KivSystem2.TXT", report);
  host.answers = {Answer::yes};
  offerConversion(program, "Input may qualify");
  EXPECT_TRUE(program.panel.cmdConvert.enabled);
  ASSERT_EQ(host.messages.size(), 2U);
  EXPECT_EQ(host.messages[0].text, "Convert?");
  EXPECT_EQ(host.messages[0].buttons, Buttons::yesNo);
  EXPECT_TRUE(host.hasFile(result2));
}

TEST_F(Convert, TheAnswerNoLeavesEverythingAsItIs) {
  host.answers = {Answer::no};
  offerConversion(program, "");
  EXPECT_FALSE(program.panel.cmdConvert.enabled);
  EXPECT_FALSE(host.hasFile(result1));
}

}  // namespace
}  // namespace kiv::test
