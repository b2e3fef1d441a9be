#include "shell/select_files.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "shell/frm_kivsystem.h"
#include "shell/result_folder.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

/// The panel in use; its modules are there.
class PanelInUse : public ::testing::Test {
 protected:
  void SetUp() override {
    Settings& settings = program.settings;
    settings.currentFolder = "C:\\KIV";
    settings.musFolder = "D:\\MUSIC";
    settings.namesFile = "C:\\KIV\\NAMES.TXT";
    settings.namesExe = "C:\\KIV\\KIVNAMES.EXE";
    settings.oleExe = "C:\\KIV\\KIVOLE.EXE";
    settings.fileType = "MUS";
    for (const char* module : {"KIVNAMES.EXE", "KIVOLE.EXE", "KIVFOLDR.EXE"}) {
      host.addFile(module, "");
    }
    host.addFile("D:\\MUSIC\\X1.MUS", page("staff 1 at 0\n"));
    host.addFile("D:\\MUSIC\\X2.MUS", page("staff 1 at 0\n"));
  }
  void name(const std::string& lines) { host.addFile("C:\\KIV\\NAMES.TXT", lines); }
  bool called(const std::string& call) const {
    return std::find(host.calls.begin(), host.calls.end(), call) != host.calls.end();
  }

  FakeHost host;
  KivSystem program{host};
  Panel& panel = program.panel;
};

// --- the buttons that follow the selection ---

TEST_F(PanelInUse, OneNameIsToldInTheTooltip) {
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
  EXPECT_EQ(endOf([&] { cmdSelectFiles_Click(program); }), 1);
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
  EXPECT_EQ(endOf([&] { cmdSelectFiles_OLEDragDrop(program, std::nullopt); }), std::nullopt);
  EXPECT_EQ(host.messages, std::vector{information("Drop error 461")});
}

TEST_F(PanelInUse, AMissingDropModuleEndsTheProgram) {
  host.deleteFile("KIVOLE.EXE");
  EXPECT_EQ(endOf([&] { cmdSelectFiles_OLEDragDrop(program, {{"C:\\M\\A.MUS"}}); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Module KIVOLE.EXE not properly installed")});
}

TEST_F(PanelInUse, AFailingShellEndsTheProgram) {
  host.shellFailure = {{-2147024894, "not found"}};
  EXPECT_EQ(endOf([&] { cmdSelectFiles_Click(program); }), 1);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_TRUE(host.messages[0].text.starts_with("Run-time error: not found\r\nKIVNAMES.EXE STARTDIR="));
}

TEST_F(PanelInUse, ADropThatTheShellFailsOnIsReportedWithItsNumber) {
  for (const std::int32_t number : {-2147024894, 429}) {
    host.shellFailure = {{number, "not found"}};
    host.addFile("NAMES.TXT", "C:\\M\\A.MUS 1\r\n");
    EXPECT_EQ(endOf([&] { cmdSelectFiles_OLEDragDrop(program, {{"C:\\M\\A.MUS"}}); }), std::nullopt);
  }
  EXPECT_EQ(host.messages, (std::vector{information("Drop error-2147024894"), information("Drop error 429")}));
  EXPECT_EQ(program.names.nameCount, 0) << "the names file is not read";
}

// --- the choice of the result folder ---

TEST_F(PanelInUse, TheFolderIsChosenInThePanelsPlace) {
  host.addFile("KIVFOLDR.KIV", "* chosen folder\r\nD:\\OUT\r\n");
  host.calls.clear();
  txtFirstResultFile_Click(program);
  EXPECT_EQ(host.calls,
            (std::vector<std::string>{
                "pointer hourglass", "events",
                "shell KIVFOLDR.EXE REMARK=Select output folder,STARTDIR=C:\\KIV,FILE=KIVFOLDR.KIV,DEBUG=NO "
                "(style 1)",
                "events", "pointer normal"}));
  EXPECT_EQ(panel.txtFirstResultFile.text, "D:\\OUT\\WORK0001.MUS");
  EXPECT_TRUE(panel.visible);
}

TEST_F(PanelInUse, WhileTheModuleRunsThePanelIsHidden) {
  host.shellFailure = {{-2147024894, "not found"}};  // the box comes up while the panel is away
  bool visible = true;
  host.whileShown = [&](const Message&) { visible = panel.visible; };
  EXPECT_EQ(endOf([&] { txtFirstResultFile_Click(program); }), 1);
  EXPECT_FALSE(visible);
}

TEST_F(PanelInUse, AnswersOfTheFolderModule) {
  const std::map<std::string, std::string> results = {
      {"* chosen folder\r\nD:\\OUT", "D:\\OUT\\WORK0001.MUS"},
      {"D:\\OUT\\   \r\n", "D:\\OUT\\WORK0001.MUS"},
      {"D:\\\r\n", "D:\\WORK0001.MUS"},
      {"D:\\A\r\nD:\\B\r\n", "D:\\B\\WORK0001.MUS"},
      {"\r\nD:\\A\r\n\r\n* end\r\n", "D:\\A\\WORK0001.MUS"},
      {" D:\\A\r\n", " D:\\A\\WORK0001.MUS"},
  };
  for (const auto& [answer, result] : results) {
    host.addFile("KIVFOLDR.KIV", answer);
    txtFirstResultFile_Click(program);
    EXPECT_EQ(panel.txtFirstResultFile.text, result) << answer;
  }
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(PanelInUse, WithoutAnAnswerTheNameStays) {
  panel.txtFirstResultFile.text = "C:\\M\\WORK0001.MUS";
  for (const std::string answer : {"* only comments\r\n", "", "D:\\A\r\n   \r\n"}) {
    host.messages.clear();
    host.addFile("KIVFOLDR.KIV", answer);
    txtFirstResultFile_Click(program);
    EXPECT_EQ(host.messages, std::vector{information("Failed to open output folder")}) << answer;
    EXPECT_EQ(panel.txtFirstResultFile.text, "C:\\M\\WORK0001.MUS");
  }
  host.messages.clear();
  host.deleteFile("KIVFOLDR.KIV");
  txtFirstResultFile_Click(program);
  EXPECT_EQ(host.messages, std::vector{information("Failed to open output folder")}) << "no answer file";
}

TEST_F(PanelInUse, AnOldAnswerIsReadAgain) {
  host.addFile("KIVFOLDR.KIV", "D:\\OLD\r\n");
  txtFirstResultFile_Click(program);
  EXPECT_EQ(panel.txtFirstResultFile.text, "D:\\OLD\\WORK0001.MUS");
  EXPECT_TRUE(host.hasFile("KIVFOLDR.KIV"));
}

TEST_F(PanelInUse, WithoutTheFolderModuleTheNameStays) {
  host.deleteFile("KIVFOLDR.EXE");
  panel.txtFirstResultFile.text = "C:\\M\\WORK0001.MUS";
  host.calls.clear();
  txtFirstResultFile_Click(program);
  EXPECT_EQ(host.messages,
            std::vector{
                information("Module KIVFOLDR.EXE not properly installed. Name of default folder cannot be modified.")});
  EXPECT_EQ(panel.txtFirstResultFile.text, "C:\\M\\WORK0001.MUS");
  EXPECT_TRUE(host.calls.empty());
}

// --- what a press leads to ---

TEST_F(PanelInUse, ReturnEndsTheProgramWithoutAWord) {
  EXPECT_EQ(endOf([&] { clicked(program, &Panel::cmdReturn); }), 0);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(PanelInUse, ViewNamesEndsTheProgramAfterNotepad) {
  name("D:\\MUSIC\\X1.MUS 1\r\n");
  EXPECT_EQ(endOf([&] { clicked(program, &Panel::cmdViewNames); }), 0);
  EXPECT_TRUE(called("run Notepad C:\\KIV\\NAMES.TXT"));
}

TEST_F(PanelInUse, TheBoxForZeroIdentifiersTogglesTheSetting) {
  for (const bool checked : {true, false, true}) {
    panel.chkIggZeroInstrId.checked = checked;
    clicked(program, &Panel::chkIggZeroInstrId);
    EXPECT_EQ(program.settings.allowZeroInstrId, checked);
  }
}

TEST_F(PanelInUse, EveryButtonHasItsHandler) {
  name("D:\\MUSIC\\X1.MUS 1\r\n");
  clicked(program, &Panel::cmdSelectFiles);
  EXPECT_TRUE(host.calls.back().starts_with("list ")) << "the names were loaded";
  clicked(program, &Panel::txtFirstResultFile);
  EXPECT_EQ(host.messages.back(), information("Failed to open output folder"));
  program.settings.commandLine = "CALLEDBY=KIV,FUNCTION=MAIN";
  host.addFile("D:\\MUSIC\\X1.MUS", page("staff 1 at 0 instrument 5\nbarline 1 at 0 spans 1\n"));
  EXPECT_EQ(endOf([&] { clicked(program, &Panel::cmdRun); }), 0) << "one system qualifies";
  clicked(program, &Panel::cmdConvert);
  EXPECT_EQ(host.messages.back(),
            information("Created 1 files.\r\nFirst is D:\\MUSIC\\WORK0001.MUS\r\nLast is D:\\MUSIC\\WORK0001.MUS"));
  clicked(program, &Panel::cmdSortInstrument);
  EXPECT_EQ(host.messages.back(), information("Sort finished"));
}

TEST_F(PanelInUse, OtherControlsDoNothing) {
  const std::size_t calls = host.calls.size();
  for (Control Panel::*control :
       {&Panel::chkOverwrite, &Panel::chkShowInstrNumber, &Panel::chkDebug, &Panel::lblWait}) {
    clicked(program, control);
  }
  EXPECT_EQ(host.calls.size(), calls);
  EXPECT_TRUE(host.messages.empty());
}

}  // namespace
}  // namespace kiv::test
