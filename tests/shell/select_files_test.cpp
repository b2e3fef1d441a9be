#include "shell/select_files.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/shell/panel_in_use.h"

namespace kiv::test {
namespace {

// --- the buttons that follow the selection ---

TEST_F(PanelInUse, OneNameIsShownInTheTooltip) {
  host.folderEntries = {{"a long name 1.mus", false}};
  host.shortNames = {{"D:\\MUSIC\\a long name 1.mus", "D:\\MUSIC\\X1.MUS"}};
  name("D:\\MUSIC\\X1.MUS 1\r\n");
  setSelectedFileButtons(program);
  EXPECT_TRUE(panel.cmdViewNames.enabled);
  EXPECT_TRUE(panel.cmdRun.enabled);
  EXPECT_EQ(panel.cmdViewNames.tooltip, "Names file C:\\KIV\\NAMES.TXT has one filename: D:\\MUSIC\\a long name 1.mus");
}

TEST_F(PanelInUse, ALongNameThatIsNotFoundIsLeftOut) {
  name("D:\\MUSIC\\X1.MUS 1\r\n");
  setSelectedFileButtons(program);
  EXPECT_EQ(panel.cmdViewNames.tooltip, "Names file C:\\KIV\\NAMES.TXT has one filename: ");
}

TEST_F(PanelInUse, SeveralNamesAreCounted) {
  host.folderEntries = {{"X1.MUS", false}};
  name("D:\\MUSIC\\X1.MUS 1\r\nD:\\MUSIC\\X2.MUS 1\r\n");
  setSelectedFileButtons(program);
  EXPECT_EQ(panel.cmdViewNames.tooltip, "Names file C:\\KIV\\NAMES.TXT has 2 filenames, the first: D:\\MUSIC\\X1.MUS");
}

TEST_F(PanelInUse, NoNameLeavesTheTooltipAndDisablesTheButtons) {
  panel.cmdViewNames.tooltip = "as it was";
  name("* nothing\r\n");
  setSelectedFileButtons(program);
  EXPECT_EQ(panel.cmdViewNames.tooltip, "as it was");
  EXPECT_FALSE(panel.cmdViewNames.enabled);
  EXPECT_FALSE(panel.cmdRun.enabled);
}

TEST_F(PanelInUse, OnceEnabledTheButtonsStayEnabled) {
  name("D:\\MUSIC\\X1.MUS 1\r\n");
  setSelectedFileButtons(program);
  const std::string tooltip = panel.cmdViewNames.tooltip;
  name("");
  setSelectedFileButtons(program);
  EXPECT_TRUE(panel.cmdViewNames.enabled);
  EXPECT_TRUE(panel.cmdRun.enabled);
  EXPECT_EQ(panel.cmdViewNames.tooltip, tooltip);
}

// --- the choice of files ---

TEST_F(PanelInUse, FilesAreChosenByTheModule) {
  name("D:\\MUSIC\\X1.MUS 1\r\n");
  cmdSelectFiles_Click(program);
  EXPECT_TRUE(
      called("shell KIVNAMES.EXE STARTDIR=C:\\KIV,SUFFIX=MUS,MUSFOLDER=D:\\MUSIC,NAMESFILE=C:\\KIV\\NAMES.TXT,"
             "DEBUG=NO (style 1)"));
  EXPECT_TRUE(panel.cmdRun.enabled) << "the names were loaded";
}

TEST_F(PanelInUse, WithoutMusicFolderTheFieldIsEmpty) {
  program.settings.musFolder = "";
  cmdSelectFiles_Click(program);
  EXPECT_TRUE(
      called("shell KIVNAMES.EXE STARTDIR=C:\\KIV,SUFFIX=MUS,MUSFOLDER=,NAMESFILE=C:\\KIV\\NAMES.TXT,DEBUG=NO "
             "(style 1)"));
}

TEST_F(PanelInUse, AMissingNamesModuleEndsTheProgram) {
  host.deleteFile("KIVNAMES.EXE");
  EXPECT_EQ(endOf(host, [&] { cmdSelectFiles_Click(program); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Module KIVNAMES.EXE not properly installed")});
}

TEST_F(PanelInUse, DroppedFilesGoToTheirModuleInTheirOrder) {
  name("D:\\MUSIC\\X2.MUS 1\r\n");
  cmdSelectFiles_OLEDragDrop(program, {{"C:\\M\\A2.MUS", "C:\\M\\with, comma 1.MUS"}});
  EXPECT_TRUE(
      called("shell KIVOLE.EXE STARTDIR=C:\\KIV,NAMESFILE=C:\\KIV\\NAMES.TXT,DEBUG=NO,TYPE=MUS,LIST="
             "C:\\M\\A2.MUS,C:\\M\\with, comma 1.MUS, (style 1)"));
  EXPECT_TRUE(panel.cmdRun.enabled);
}

TEST_F(PanelInUse, ADropEnablesWhatNeedsASelection) {
  host.addFile("C:\\KIV\\NAMES.TXT", "D:\\MUSIC\\X2.MUS 1\r\n");
  panel.cmdRun.enabled = false;
  panel.cmdViewNames.enabled = false;
  cmdSelectFiles_OLEDragDrop(program, {{"C:\\M\\A2.MUS"}});
  EXPECT_TRUE(panel.cmdRun.enabled);
  EXPECT_TRUE(panel.cmdViewNames.enabled);
  EXPECT_TRUE(panel.cmdViewNames.tooltip.starts_with("Names file C:\\KIV\\NAMES.TXT has one filename: "));
}

TEST_F(PanelInUse, ADropWithoutFilesIsReported) {
  cmdSelectFiles_OLEDragDrop(program, std::nullopt);
  EXPECT_EQ(host.messages, std::vector{information("Drop error 461")});
  EXPECT_TRUE(host.calls.empty()) << "no module runs";
}

TEST_F(PanelInUse, FoldersWithBlanksAndCommasArePassedAsTheyAre) {
  program.settings.currentFolder = "C:\\Kiv, new";
  program.settings.musFolder = "D:\\Bach, J. S.";
  program.settings.namesFile = "C:\\Kiv, new\\my names.txt";
  cmdSelectFiles_Click(program);
  EXPECT_TRUE(
      called("shell KIVNAMES.EXE STARTDIR=C:\\Kiv, new,SUFFIX=MUS,MUSFOLDER=D:\\Bach, J. S.,"
             "NAMESFILE=C:\\Kiv, new\\my names.txt,DEBUG=NO (style 1)"));
}

TEST_F(PanelInUse, AModuleThatWritesNothingLeavesTheTooltip) {
  panel.cmdViewNames.tooltip = "as it was";
  cmdSelectFiles_Click(program);
  EXPECT_EQ(panel.cmdViewNames.tooltip, "as it was");
  EXPECT_FALSE(panel.cmdViewNames.enabled);
  EXPECT_FALSE(panel.cmdRun.enabled);
  cmdSelectFiles_OLEDragDrop(program, {{"C:\\M\\A.MUS"}});
  EXPECT_EQ(panel.cmdViewNames.tooltip, "as it was");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(PanelInUse, ADropOfNoFileGoesToTheModuleWithAnEmptyList) {
  cmdSelectFiles_OLEDragDrop(program, std::vector<std::string>{});
  EXPECT_TRUE(
      called("shell KIVOLE.EXE STARTDIR=C:\\KIV,NAMESFILE=C:\\KIV\\NAMES.TXT,DEBUG=NO,TYPE=MUS,LIST= (style 1)"));
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(PanelInUse, ADropWithoutFilesIsReportedEvenWithoutTheModule) {
  host.deleteFile("KIVOLE.EXE");
  EXPECT_EQ(endOf(host, [&] { cmdSelectFiles_OLEDragDrop(program, std::nullopt); }), std::nullopt);
  EXPECT_EQ(host.messages, std::vector{information("Drop error 461")});
}

TEST_F(PanelInUse, AMissingDropModuleEndsTheProgram) {
  host.deleteFile("KIVOLE.EXE");
  EXPECT_EQ(endOf(host, [&] { cmdSelectFiles_OLEDragDrop(program, {{"C:\\M\\A.MUS"}}); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Module KIVOLE.EXE not properly installed")});
}

TEST_F(PanelInUse, AFailingShellEndsTheProgram) {
  host.shellFailure = {{-2147024894, "not found"}};
  EXPECT_EQ(endOf(host, [&] { cmdSelectFiles_Click(program); }), 1);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_TRUE(host.messages[0].text.starts_with("Run-time error: not found\r\nKIVNAMES.EXE STARTDIR="));
}

TEST_F(PanelInUse, ADropThatTheShellFailsOnIsReportedWithItsNumber) {
  for (const std::int32_t number : {-2147024894, 429}) {
    host.shellFailure = {{number, "not found"}};
    host.addFile("NAMES.TXT", "C:\\M\\A.MUS 1\r\n");
    EXPECT_EQ(endOf(host, [&] { cmdSelectFiles_OLEDragDrop(program, {{"C:\\M\\A.MUS"}}); }), std::nullopt);
  }
  EXPECT_EQ(host.messages, (std::vector{information("Drop error-2147024894"), information("Drop error 429")}));
  EXPECT_EQ(program.names.nameCount, 0) << "the names file is not read";
}

}  // namespace
}  // namespace kiv::test
