#include "shell/cmd_convert.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "shell/cmd_run.h"
#include "tests/shell/convert_fixture.h"

namespace kiv::test {
namespace {

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

TEST_F(Convert, RecordsOfASystemMayBeAnywhereInTheReport) {
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

TEST_F(Convert, NamesAreUsedAsTheyAreDownToEightCharacters) {
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

TEST_F(Convert, WhenTheInputDoesNotQualifyConvertIsOnlyEnabled) {
  offerConversion(program, Qualification::doesNotQualify);
  EXPECT_TRUE(program.panel.cmdConvert.enabled);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Convert, OtherwiseTheAnswerYesStartsTheConversion) {
  host.addFile("KivSystem2.TXT", report);
  host.answers = {Answer::yes};
  offerConversion(program, Qualification::qualifies);
  EXPECT_TRUE(program.panel.cmdConvert.enabled);
  ASSERT_EQ(host.messages.size(), 2U);
  EXPECT_EQ(host.messages[0].text, "Convert?");
  EXPECT_EQ(host.messages[0].buttons, Buttons::yesNo);
  EXPECT_TRUE(host.hasFile(result2));
}

TEST_F(Convert, TheAnswerNoLeavesEverythingAsItIs) {
  host.answers = {Answer::no};
  offerConversion(program, Qualification::qualifies);
  EXPECT_FALSE(program.panel.cmdConvert.enabled);
  EXPECT_FALSE(host.hasFile(result1));
}

}  // namespace
}  // namespace kiv::test
