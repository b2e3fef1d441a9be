#include "tests/window/panel_fixture.h"

namespace kiv::test {
namespace {

TEST_F(PanelWindow, AnalyzesAndConvertsFromTheFirstToTheLastResult) {
  addPages();
  PanelOnScreen panel;
  panel.click(&Panel::cmdRun);
  panel.answer(resultOfAnalysis());
  EXPECT_TRUE(panel.waitUntil([&] { return panel.isEnabled(&Panel::cmdConvert); }));
  EXPECT_EQ(panel.textOf(&Panel::txtFirstResultFile), folder.upper("WORK0001.MUS"));
  panel.waitUntilIdle();
  panel.click(&Panel::cmdConvert);
  panel.answer(created(folder.upper("")));
  panel.waitUntilIdle();
  EXPECT_FALSE(panel.isVisible(&Panel::lblWait));
  EXPECT_TRUE(exists("WORK0001.MUS"));
  EXPECT_TRUE(exists("WORK0002.MUS"));
  panel.leave();
}

TEST_F(PanelWindow, LeavesWhatTheConsoleProgramLeaves) {
  addPages();
  makeFolder("PANEL");
  makeFolder("CONSOLE");
  {
    PanelOnScreen panel;
    panel.click(&Panel::cmdRun);
    panel.answer(resultOfAnalysis());
    panel.waitUntilIdle();
    panel.type(folder / "PANEL\\WORK0001.MUS");
    panel.click(&Panel::cmdConvert);
    panel.answer(created(folder / "PANEL\\"));
    panel.waitUntilIdle();
    panel.leave();
  }
  const std::string verdict = readFileContent("KivSystem1.TXT");
  const std::string report = readFileContent("KivSystem2.TXT");
  WatchedProcess console = start("\"" + builtFile("..\\..\\apps\\kivsys\\kivsys.exe") +
                                     "\" convert --names NAMES.TXT --result CONSOLE\\WORK0001.MUS",
                                 "out.txt", "error.txt");
  EXPECT_EQ(console.exitCode(), 0) << readFileContent("error.txt");
  EXPECT_EQ(namesIn("CONSOLE"), namesIn("PANEL"));
  for (const std::string name : {"WORK0001.MUS", "WORK0002.MUS"}) {
    EXPECT_EQ(readFileContent("PANEL\\" + name), readFileContent("CONSOLE\\" + name)) << name;
  }
  const auto withoutDate = [](const std::string& text) { return text.substr(text.find('\n')); };
  EXPECT_EQ(readFileContent("KivSystem1.TXT"), verdict);
  EXPECT_EQ(withoutDate(readFileContent("KivSystem2.TXT")), withoutDate(report));
}

TEST_F(PanelWindow, InputThatQualifiesEndsTheProgram) {
  folder.addPage("X1.MUS", trio);
  folder.writeNames("NAMES.TXT");
  PanelOnScreen panel;
  panel.click(&Panel::cmdRun);
  panel.answer(
      "Input qualifies for conversion to one file per system.\r\n"
      "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.");
  EXPECT_EQ(panel.process().exitCode(), 0);
}

TEST_F(PanelWindow, AnEmptySelectionIsReportedAndThePanelStays) {
  addPages();
  PanelOnScreen panel;
  DeleteFileA("NAMES.TXT");
  panel.click(&Panel::cmdRun);
  panel.answer("No input files: " + folder / "NAMES.TXT");
  panel.waitUntilIdle();
  EXPECT_FALSE(panel.isVisible(&Panel::lblWait));
  EXPECT_FALSE(panel.isEnabled(&Panel::cmdConvert));
  panel.leave();
}

TEST_F(PanelWindow, WhileARunIsOnTheWaitLabelShowsAndClicksHaveNoEffect) {
  folder.addPage("X1.MUS", std::string(withoutIdentifier));
  folder.writeNames("NAMES.TXT");
  PanelOnScreen panel;
  panel.click(&Panel::cmdRun);
  const auto box = panel.process().nextBox();
  ASSERT_TRUE(box);
  EXPECT_TRUE(panel.isVisible(&Panel::lblWait));
  EXPECT_EQ(panel.textOf(&Panel::lblWait), "Wait for analysis to finish");
  panel.clickAndWait(&Panel::cmdReturn);
  panel.clickAndWait(&Panel::chkIggZeroInstrId);
  SendMessageA(panel.window(), WM_CLOSE, 0, 0);
  EXPECT_FALSE(panel.isChecked(&Panel::chkIggZeroInstrId));
  EXPECT_TRUE(IsWindow(box->window));
  panel.process().close(*box, "OK");
  panel.answer(
      "Input qualifies for conversion to one file per system.\r\n"
      "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.");
  EXPECT_EQ(panel.process().exitCode(), 0);
}

TEST_F(PanelWindow, TheBoxForZeroIdentifiersCounts) {
  folder.addPage("X1.MUS", std::string(withoutIdentifier));
  folder.writeNames("NAMES.TXT");
  PanelOnScreen panel;
  panel.clickAndWait(&Panel::chkIggZeroInstrId);
  EXPECT_TRUE(panel.isChecked(&Panel::chkIggZeroInstrId));
  panel.click(&Panel::cmdRun);
  panel.answer(
      "Input qualifies for conversion to one file per system.\r\n"
      "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.");
  EXPECT_EQ(panel.process().exitCode(), 0);
}

TEST_F(PanelWindow, WithoutOverwriteItAsksAndObeys) {
  addPages();
  writeFile("WORK0001.MUS", "old");
  const std::string question = "File exists: " + folder.upper("WORK0001.MUS") + "\r\n\r\nOverwrite?";
  {
    PanelOnScreen panel;
    panel.clickAndWait(&Panel::chkOverwrite);
    panel.click(&Panel::cmdRun);
    panel.answer(resultOfAnalysis());
    panel.waitUntilIdle();
    panel.click(&Panel::cmdConvert);
    panel.answer(question, "No");
    panel.answer("Abnormal termination forced by user.");
    EXPECT_EQ(panel.process().exitCode(), 1);
    EXPECT_EQ(readFileContent("WORK0001.MUS"), "old");
  }
  PanelOnScreen panel;
  panel.clickAndWait(&Panel::chkOverwrite);
  panel.click(&Panel::cmdRun);
  panel.answer(resultOfAnalysis());
  panel.waitUntilIdle();
  panel.click(&Panel::cmdConvert);
  panel.answer(question, "Yes");
  panel.answer(created(folder.upper("")));
  panel.waitUntilIdle();
  EXPECT_NE(readFileContent("WORK0001.MUS"), "old");
  panel.leave();
}

TEST_F(PanelWindow, WithoutInstrumentIdsResultsAreShorter) {
  addPages();
  PanelOnScreen panel;
  panel.click(&Panel::cmdRun);
  panel.answer(resultOfAnalysis());
  panel.waitUntilIdle();
  panel.click(&Panel::cmdConvert);
  panel.answer(created(folder.upper("")));
  const std::size_t with = readFileContent("WORK0002.MUS").size();
  panel.waitUntilIdle();
  panel.clickAndWait(&Panel::chkShowInstrNumber);
  panel.click(&Panel::cmdConvert);
  panel.answer(created(folder.upper("")));
  constexpr std::size_t numberItem = 28;
  panel.waitUntilIdle();
  EXPECT_EQ(readFileContent("WORK0002.MUS").size(), with - 3 * numberItem);
  panel.leave();
}

}  // namespace
}  // namespace kiv::test
